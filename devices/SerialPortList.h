// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <map>
#include <optional>

namespace corvane {

/// One serial port of this computer.
struct SerialPortEntry
{
    int number = 0;
    QString device; ///< "/dev/ttyUSB0", "COM3"
    QString maker;
    QString description;
    QString serialNumber{}; ///< the adapter's own; empty when it has none

    bool operator==(const SerialPortEntry &) const = default;
};

/// Gives serial ports their numbers: COMn is n; where ports have no such names, the n-th port that
/// the system lists in natural order. Numbers pinned to a device win.
class SerialPortList
{
public:
    /// Lists the ports there are now; numbers and order do not matter.
    using Source = std::function<QList<SerialPortEntry>()>;

    /// The ports of the system. Listing them opens built-in ports for a moment.
    static QList<SerialPortEntry> systemPorts();

    explicit SerialPortList(Source source = systemPorts);

    /// Lets the number mean the device from now on; 0 for a device that needs none.
    void pin(int number, const QString &device);
    void pin(const QMap<int, QString> &devices);

    /// All ports by number, pinned ones included. A port that lost its number to a pinned one
    /// is left out.
    [[nodiscard]] QList<SerialPortEntry> entries() const;
    /// The ports as text, a line each: number, device, maker, description, serial number, a tab
    /// between them.
    [[nodiscard]] static QString describe(const QList<SerialPortEntry> &ports);
    /// The number that a typed port is: a whole number, or the n of COMn; nothing for a device's
    /// name. Throws PlatformError for what begins as a number and is none, and for an empty text.
    [[nodiscard]] static std::optional<int> numberIn(const QString &entry);
    /// The device that a name means: a path itself, else one that is listed ("ttyUSB0"), else one
    /// that is there. Throws as the next.
    [[nodiscard]] QString device(const QString &name) const;
    /// The device of a number. Throws PlatformError that tells the numbers there are.
    [[nodiscard]] QString device(int number) const;

private:
    [[nodiscard]] std::map<int, SerialPortEntry> byNumber() const;
    /// Says what is wrong and which ports there are.
    [[noreturn]] static void refuse(const QString &what,
                                    const std::map<int, SerialPortEntry> &ports);

    Source m_source;
    std::map<int, QString> m_pinned;
};

} // namespace corvane
