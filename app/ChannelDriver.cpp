#include "app/ChannelDriver.h"

#include "core/channels/ChannelTexts.h"
#include "devices/GpibAddress.h"
#include "devices/PlatformError.h"
#include "devices/SerialPort.h"
#include "windows/main/GpibChannel.h"
#include "windows/main/Main.h"
#include "windows/main/SerialChannel.h"
#include "windows/main/TcpChannel.h"

namespace corvane {

namespace {

/// A reply is whole when nothing follows it for this long.
constexpr int quietMs = 60;

void refuseEntry(int index, const QString &entry, const QString &value)
{
    if (!value.isEmpty())
        throw PlatformError(
            QStringLiteral("%1 has no %2 entry")
                .arg(channelTexts::channelCaptions.at(static_cast<size_t>(index)), entry));
}

void choose(QComboBox &list, const QString &entry)
{
    if (list.findText(entry) < 0)
        throw PlatformError(QStringLiteral("%1 is not one of %2 to %3")
                                .arg(entry, list.itemText(0), list.itemText(list.count() - 1)));
    list.setCurrentText(entry);
}

} // namespace

void ChannelDriver::fillIn(int index, const ChannelEntries &entries)
{
    if (index <= channels::rs232)
        fillInSerial(index, entries);
    else if (index == channels::ieee488)
        fillInGpib(entries);
    else
        fillInTcp(index, entries);
}

void ChannelDriver::fillInSerial(int index, const ChannelEntries &entries)
{
    refuseEntry(index, QStringLiteral("host"), entries.host);
    SerialChannel &channel = m_window.serialChannel(index);
    if (!entries.port.isEmpty()) {
        (void)SerialPortList::numberIn(entries.port);
        channel.txtPort->setText(entries.port);
    }
    if (!entries.settings.isEmpty())
        channel.port().setSettings(entries.settings);
    if (!channel.cboAddress485)
        refuseEntry(index, QStringLiteral("address"), entries.address);
    else if (!entries.address.isEmpty())
        choose(*channel.cboAddress485, entries.address.rightJustified(2, u'0'));
}

void ChannelDriver::fillInGpib(const ChannelEntries &entries)
{
    refuseEntry(channels::ieee488, QStringLiteral("port"), entries.port);
    refuseEntry(channels::ieee488, QStringLiteral("host"), entries.host);
    refuseEntry(channels::ieee488, QStringLiteral("settings"), entries.settings);
    if (entries.address.isEmpty())
        return;
    const QStringList parts = entries.address.split(QStringLiteral("::"));
    (void)GpibAddress::parse(parts.size() > 1 ? entries.address
                                              : QStringLiteral("GPIB0::") + entries.address);
    if (parts.size() > 1)
        m_window.gpibChannel().showAddress(parts.first(), parts.mid(1).join(QStringLiteral("::")));
    else
        m_window.gpibChannel().cboIEEEAddress->setCurrentText(entries.address);
}

void ChannelDriver::fillInTcp(int index, const ChannelEntries &entries)
{
    refuseEntry(index, QStringLiteral("address"), entries.address);
    refuseEntry(index, QStringLiteral("settings"), entries.settings);
    const TcpChannel &channel = m_window.tcpChannel(index);
    if (!entries.host.isEmpty())
        channel.txtAddress->setText(entries.host);
    if (!entries.port.isEmpty())
        channel.txtPort->setText(entries.port);
}

bool ChannelDriver::connect(int index, int patienceMs)
{
    Channel &channel = *m_window.channel(index);
    bool failed = false;
    const auto watch =
        QObject::connect(&channel, &Channel::connectFailed, &channel, [&failed] { failed = true; });
    channel.cmdConnect_Click();
    m_window.waits().waitUntil([&] { return failed || channel.isOpen(); }, patienceMs);
    QObject::disconnect(watch);
    return channel.isOpen();
}

std::optional<QString> ChannelDriver::ask(int index, const QString &command, int patienceMs)
{
    Channel &channel = *m_window.channel(index);
    int arrivals = 0;
    const auto watch =
        QObject::connect(&channel, &Channel::replied, &channel, [&arrivals] { ++arrivals; });
    channel.setCommand(command);
    channel.cmdSend_Click();
    m_window.waits().waitUntil([&] { return arrivals > 0; }, patienceMs);
    for (int seen = 0; seen != arrivals;) {
        seen = arrivals;
        m_window.waits().wait(quietMs);
    }
    QObject::disconnect(watch);
    return arrivals > 0 ? std::optional(channel.txtIn->text()) : std::nullopt;
}

} // namespace corvane
