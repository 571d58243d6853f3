#pragma once

#include "bench/OrderText.h"

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

    /// The orders that change something, faults aside.
    static std::vector<OrderText> choices();
    /// What the orders have made of the board and the meter, in a line.
    [[nodiscard]] QString state() const;

private:
    struct Order
    {
        OrderText text;
        /// Empty: the arguments were wrong. It gets as many as the text names.
        QString (BenchOrders::*run)(const QStringList &arguments);
    };
    static std::span<const Order> orders();

    QString list(const QStringList &arguments);
    QString clear(const QStringList &arguments);
    QString connector(const QStringList &arguments);
    QString stuck(const QStringList &arguments);
    QString free(const QStringList &arguments);
    QString sensor(const QStringList &arguments);
    QString meter(const QStringList &arguments);
    QString serial(const QStringList &arguments);
    QString power(const QStringList &arguments);
    QString help(const QStringList &arguments);
    QString fault(const QString &place, const QString &text);

    Bench &m_bench;
};

} // namespace corvane::bench
