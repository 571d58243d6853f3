#pragma once

#include <QByteArray>
#include <QString>

namespace corvane {

/// The far end of a serial line: a pseudo terminal whose other side the code under test opens.
class Pty
{
public:
    Pty();
    ~Pty();
    Q_DISABLE_COPY_MOVE(Pty)

    /// The device that the code under test opens.
    [[nodiscard]] QString device() const;
    void write(const QByteArray &bytes) const;
    /// Everything that has come in; empty when nothing waits.
    [[nodiscard]] QByteArray read() const;
    /// Pulls the adapter out.
    void unplug();

    /// The line as the driver has it: rate, "odd", "sticky" and "two stop bits" flags.
    struct Line
    {
        unsigned rate;
        bool odd;
        bool sticky;
        bool twoStops;
    };
    [[nodiscard]] Line line() const;

private:
    int m_master = -1;
    int m_keeper = -1; ///< holds the far side open, so that closing it is no hang-up
};

} // namespace corvane
