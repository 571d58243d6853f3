#pragma once

#include <QString>

#include <array>

/// The fixed texts of the Channels, kept exactly as they stand.
namespace corvane::channelTexts {

inline const QString connectError = QStringLiteral("Error occurred while trying to connect.");
inline const QString disconnectError = QStringLiteral("Error occurred while trying to disconnect.");
inline const QString disconnectErrorTitle = QStringLiteral("Function cmdDisconnect");
inline const QString sendError = QStringLiteral("Error occurred in CmdSend");
inline const QString readError = QStringLiteral("Error occurred while trying to read.");
/// The socket's description follows without a separator.
inline const QString socketError = QStringLiteral("Error");
inline const QString noTcpPort = QStringLiteral("the port \"%1\" is not a number from 1 to 65535");
inline const QString alreadyConnected =
    QStringLiteral("You are already connected.  To change the port number, you must first "
                   "disconnect.");
inline const QString notSendable =
    QStringLiteral("The command holds a character that cannot be sent: \"%1\".  Nothing was sent.");

inline const QString timedOut = QStringLiteral("Timed Out: %1 ms.");
inline const QString loopTimedOut = QStringLiteral("Loop timed out: %1 ms.");

/// "%1" is the Channel.
inline const QString oldestDropped =
    QStringLiteral("%1: the reply has no end; the box keeps its newest 64 MB, older text was "
                   "dropped");
inline const QString newestPieceAlone = QStringLiteral(
    "%1: several pieces have arrived since the command; the box shows the newest one alone");
inline const QString wasReset =
    QStringLiteral("%1: the connection was reset by the peer; what it had not sent yet is lost");
inline const QString piecesUnsent =
    QStringLiteral("TCP/IP-2: the rest of the command was not sent: %1");
inline const QString anotherFollowed = QStringLiteral("another command followed");
inline const QString connectionEnded = QStringLiteral("the connection has ended");
/// "%1" is the time of the newest one.
inline const QString loopBeganAnew = QStringLiteral(
    "TCP/IP-2: at %1 a reply did not come; the loop began its command anew without the rest");

inline const QString idnCommand = QStringLiteral("*IDN?");
inline const QString systErrCommand = QStringLiteral("syst:err?");

/// Where an open Channel is connected.
inline const QString connectedTo = QStringLiteral("Connected to %1");
/// On IEEE 488 the place is the address and what serves its board; the board that is served and the
/// address that is not.
inline const QString placeThrough = QStringLiteral("%1 through %2");
inline const QString placeElsewhere = QStringLiteral("board GPIB%1, not to %2");
/// In the status line.
inline const QString nothingToDisconnect = QStringLiteral(
    "IEEE 488: Disconnect ends nothing; the board stays configured for the next command");
inline const QString connectingGpib = QStringLiteral("IEEE 488: connecting to %1 ...");

inline const QString portOpen = QStringLiteral("Port Open");
inline const QString portClosed = QStringLiteral("Port Closed");
/// By the socket's state 0..8; a state of 9 or more leaves the text as it is.
inline const std::array<QString, 9> socketStates = {
    QStringLiteral("Socket Closed"),
    QStringLiteral("Socket Open"),
    QStringLiteral("Socket Listening"),
    QStringLiteral("Socket Connection Pending"),
    QStringLiteral("Socket Resolving host"),
    QStringLiteral("Socket Host resolved"),
    QStringLiteral("Socket Connecting"),
    QStringLiteral("Socket Connected"),
    QStringLiteral("Socket Peer is closing the connection")};

/// "%1" is how many characters of a reply the log takes.
inline const QString logShortened =
    QStringLiteral("The log takes the newest %1 characters of a reply; one was longer");
/// Follows the reason why a record could not be written.
inline const QString logTorn = QStringLiteral("; a part of the last record stays in the file");
inline const QString logOverflow =
    QStringLiteral("Text Box > 32000 Characters: Buffer Over Run: Text Box Reset");

} // namespace corvane::channelTexts
