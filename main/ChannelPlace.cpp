#include "main/ChannelPlace.h"

#include "common/Module1.h"
#include "main/GpibChannel.h"
#include "main/Main.h"
#include "main/SerialChannel.h"
#include "main/TcpChannel.h"
#include "platform/GpibControl.h"
#include "platform/PlatformError.h"
#include "platform/SerialPort.h"

namespace corvane {

namespace {

QString serialPlace(const Main &window, int index)
{
    const SerialChannel &channel = window.serialChannel(index);
    const int number = channel.port().commPort();
    QString place = QStringLiteral("port %1").arg(number);
    for (const SerialPortEntry &entry : window.parts().serialPorts()) {
        if (entry.number == number)
            place = QStringLiteral("%1 (port %2)").arg(entry.device).arg(number);
    }
    place += QStringLiteral(", ") + channel.port().settings();
    if (channel.cboAddress485)
        place += QStringLiteral(", address ") + channel.cboAddress485->currentText();
    return place;
}

QString gpibPlace(const Main &window)
{
    const QString connectString = window.parts().gpib.connectString();
    try {
        const auto board = static_cast<size_t>(GpibAddress::parse(connectString).board);
        return QStringLiteral("%1 (%2)").arg(connectString,
                                             window.parts().gpibAdapters.at(board).toString());
    } catch (const PlatformError &) {
        return connectString; // the entries name no board
    }
}

} // namespace

QString channelPlace(const Main &window, int index)
{
    if (index <= channels::rs232)
        return serialPlace(window, index);
    if (index == channels::ieee488)
        return gpibPlace(window);
    const TcpChannel &channel = window.tcpChannel(index);
    return channel.txtAddress->text() + u':' + channel.txtPort->text();
}

} // namespace corvane
