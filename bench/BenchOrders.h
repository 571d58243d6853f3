#pragma once

#include <QString>
#include <QStringList>

#include <span>

namespace corvane::bench {

class Bench;

/// The orders by which people and tests make the bench misbehave, as text. Every order gets an
/// answer; a wrong one says what would be right and changes nothing.
class BenchOrders
{
public:
    explicit BenchOrders(Bench &bench)
        : m_bench(bench)
    {
    }

    QString run(const QString &text);

    /// All orders with what they do, for people.
    static QString help();

private:
    struct Order
    {
        const char *word;
        const char *arguments;
        const char *about;
        /// Empty: the arguments were wrong.
        QString (BenchOrders::*run)(const QStringList &arguments);
    };
    static std::span<const Order> orders();

    QString list(const QStringList &arguments);
    QString clear(const QStringList &arguments);
    QString connector(const QStringList &arguments);
    QString stuck(const QStringList &arguments);
    QString sensor(const QStringList &arguments);
    QString meter(const QStringList &arguments);
    QString serial(const QStringList &arguments);
    QString power(const QStringList &arguments);
    QString showHelp(const QStringList &arguments);
    QString fault(const QString &place, const QString &text);

    Bench &m_bench;
};

} // namespace corvane::bench
