// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/SerialPortList.h"

#include "devices/PlatformError.h"
#include "devices/WholeNumber.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <QStringList>

#include <algorithm>
#include <limits>

namespace corvane {

namespace {

/// Orders "ttyS2" before "ttyS10": runs of digits compare as numbers.
bool naturallyBefore(QStringView a, QStringView b)
{
    const auto digitRun = [](QStringView text) {
        const auto end = std::ranges::find_if_not(text, [](QChar c) { return c.isDigit(); });
        return text.first(end - text.begin());
    };
    while (!a.isEmpty() && !b.isEmpty()) {
        const QStringView runA = digitRun(a);
        const QStringView runB = digitRun(b);
        if (!runA.isEmpty() && !runB.isEmpty()) {
            const auto numberA = runA.toULongLong();
            const auto numberB = runB.toULongLong();
            if (numberA != numberB)
                return numberA < numberB;
            a = a.sliced(runA.size());
            b = b.sliced(runB.size());
        } else if (a.front() != b.front()) {
            return a.front() < b.front();
        } else {
            a = a.sliced(1);
            b = b.sliced(1);
        }
    }
    return a.size() < b.size();
}

/// The number that a device's own name gives it ("COM12"), or 0.
int numberInName(const QString &device)
{
    const QString prefix = u"COM"_s;
    const QString name = device.mid(device.lastIndexOf(u'\\') + 1);
    return name.startsWith(prefix) ? name.mid(prefix.size()).toInt() : 0;
}

#ifdef Q_OS_LINUX
/// Adds the built-in ports that cannot be opened now (in use, or not permitted). The toolkit leaves
/// them out, and the ports behind them would change their numbers.
void addBuiltInPorts(QList<SerialPortEntry> &ports)
{
    const QDir known(u"/sys/class/tty"_s);
    for (const QString &name : known.entryList({u"ttyS*"_s})) {
        QFile chip(known.filePath(name + u"/type"_s));
        if (!chip.open(QIODevice::ReadOnly) || chip.readAll().trimmed() == "0")
            continue; // a name without a port behind it
        const QString device = u"/dev/"_s + name;
        if (std::ranges::find(ports, device, &SerialPortEntry::device) == ports.end())
            ports.append({0, device, {}, {}});
    }
}
#endif

} // namespace

QList<SerialPortEntry> SerialPortList::systemPorts()
{
    QList<SerialPortEntry> ports;
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts())
        ports.append({0, info.systemLocation(), info.manufacturer(), info.description(),
                      info.serialNumber()});
#ifdef Q_OS_LINUX
    addBuiltInPorts(ports);
#endif
    return ports;
}

SerialPortList::SerialPortList(Source source)
    : m_source(std::move(source))
{
}

void SerialPortList::pin(int number, const QString &device)
{
    m_pinned[number] = device;
}

void SerialPortList::pin(const QMap<int, QString> &devices)
{
    for (auto device = devices.cbegin(); device != devices.cend(); ++device)
        pin(device.key(), device.value());
}

std::map<int, SerialPortEntry> SerialPortList::byNumber() const
{
    QList<SerialPortEntry> ports = m_source();
    std::ranges::sort(ports, naturallyBefore, &SerialPortEntry::device);
    std::map<int, SerialPortEntry> numbered;
    int position = 0;
    for (SerialPortEntry &port : ports) {
        ++position;
        const int own = numberInName(port.device);
        port.number = own > 0 ? own : position;
        numbered[port.number] = port;
    }
    for (const auto &[number, device] : m_pinned) {
        const auto listed = std::ranges::find(ports, device, &SerialPortEntry::device);
        SerialPortEntry entry = listed == ports.end() ? SerialPortEntry{} : *listed;
        entry.number = number;
        entry.device = device;
        numbered[number] = entry;
    }
    return numbered;
}

QList<SerialPortEntry> SerialPortList::entries() const
{
    QList<SerialPortEntry> result;
    for (const auto &[number, entry] : byNumber())
        result.append(entry);
    return result;
}

QString SerialPortList::describe(const QList<SerialPortEntry> &ports)
{
    QStringList lines;
    for (const SerialPortEntry &port : ports)
        lines.append(QStringList{QString::number(port.number), port.device, port.maker,
                                 port.description, port.serialNumber}
                         .join(u'\t'));
    return lines.isEmpty() ? u"no serial ports"_s : lines.join(u'\n');
}

QString SerialPortList::device(int number) const
{
    // A pinned number asks nothing of the system: listing touches ports that are none of our own.
    if (const auto pinned = m_pinned.find(number); pinned != m_pinned.end())
        return pinned->second;
    const auto ports = byNumber();
    const auto found = ports.find(number);
    if (found == ports.end())
        refuse(u"serial port %1: there is no such port"_s.arg(number), ports);
    return found->second.device;
}

QString SerialPortList::device(const QString &name) const
{
    if (name.startsWith(u'/') || name.startsWith(u'\\'))
        return name;
    const auto ports = byNumber();
    for (const auto &[number, entry] : ports) {
        if (QFileInfo(entry.device).fileName() == name)
            return entry.device;
    }
    QString unlisted = u"/dev/"_s + name;
    if (!QFileInfo::exists(unlisted))
        refuse(u"the port \"%1\" is neither a number nor a device"_s.arg(name), ports);
    return unlisted;
}

std::optional<int> SerialPortList::numberIn(const QString &entry)
{
    const QString text = entry.trimmed();
    const QString prefix = u"COM"_s;
    const bool isNamed = text.startsWith(prefix, Qt::CaseInsensitive);
    if (const auto number = wholeNumber(isNamed ? text.mid(prefix.size()) : text))
        return number;
    const bool isTooLarge = !text.isEmpty() && std::ranges::all_of(text, isDigit);
    if (isTooLarge)
        throw PlatformError(
            u"serial port %1: there is no such port; the numbers go "
            "from 1 to %2"_s.arg(text, QString::number(std::numeric_limits<int>::max())));
    if (text.isEmpty() ||
        !(text.front().isLetter() || text.front() == u'/' || text.front() == u'\\'))
        throw PlatformError(u"the port \"%1\" is not a number"_s.arg(entry));
    return {};
}

void SerialPortList::refuse(const QString &what, const std::map<int, SerialPortEntry> &ports)
{
    QStringList known;
    for (const auto &[number, entry] : ports)
        known.append(u"%1 = %2"_s.arg(number).arg(entry.device));
    throw PlatformError(
        known.isEmpty() ? u"%1: the system lists no serial ports; plug the adapter in, or pin the "
                          "number to a device (--com N=DEVICE)"_s.arg(what)
                        : u"%1; the system lists %2 (%3)"_s.arg(what, QString::number(known.size()),
                                                                known.join(u", "_s)));
}

} // namespace corvane
