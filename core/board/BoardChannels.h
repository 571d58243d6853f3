#pragma once

#include "core/channels/ChannelUsers.h"

#include <QString>

namespace corvane {

class GpibControl;
class SerialPort;
class TcpClient;

/// The half of an exchange that failed.
enum class Exchange { Send, Read };

class UnsavedCalibrations;

/// What the board window borrows from the main window, which implements it.
class BoardChannels
{
public:
    virtual ~BoardChannels() = default;

    /// The serial port of Channel 1.
    virtual SerialPort &MSComm1() = 0;
    virtual GpibControl &QBXControl1() = 0;
    virtual TcpClient &tcpClient1() = 0;

    /// What the Channel's response box holds; asked for Channels 1 and 3 only.
    [[nodiscard]] virtual QByteArray responseBytes(int channel) const = 0;
    virtual void clearResponse(int channel) = 0;
    /// Who uses the Channels: an operation over one claims it.
    virtual ChannelUsers &users() = 0;
    /// What the main window says when its own exchange over the Channel fails with that cause.
    [[nodiscard]] virtual QString faultText(int channel, Exchange half,
                                            const QString &cause) const = 0;

    /// What the board has not stored yet; remembered while the program runs.
    virtual UnsavedCalibrations &unsavedCalibrations() = 0;

    /// The board window has closed: its menu entry loses its check mark.
    virtual void uncheckMnuSBC() = 0;

protected:
    BoardChannels() = default;
    BoardChannels(const BoardChannels &) = default;
    BoardChannels &operator=(const BoardChannels &) = default;
};

} // namespace corvane
