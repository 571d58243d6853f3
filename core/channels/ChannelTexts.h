// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

#include <array>

/// The fixed texts of the Channels, kept exactly as they stand.
namespace corvane::channelTexts {

inline const QString connectError = u"Error occurred while trying to connect."_s;
inline const QString disconnectError = u"Error occurred while trying to disconnect."_s;
inline const QString disconnectErrorTitle = u"Function cmdDisconnect"_s;
inline const QString sendError = u"Error occurred in CmdSend"_s;
inline const QString readError = u"Error occurred while trying to read."_s;
/// The socket's description follows without a separator.
inline const QString socketError = u"Error"_s;
inline const QString noTcpPort = u"the port \"%1\" is not a number from 1 to 65535"_s;
inline const QString alreadyConnected =
    u"You are already connected.  To change the port number, you must first "
    "disconnect."_s;
inline const QString notSendable =
    u"The command holds a character that cannot be sent: \"%1\".  Nothing was sent."_s;

inline const QString timedOut = u"Timed Out: %1 ms."_s;
inline const QString loopTimedOut = u"Loop timed out: %1 ms."_s;

/// "%1" is the Channel.
inline const QString oldestDropped =
    u"%1: the reply has no end; the box keeps its newest 64 MB, older text was "
    "dropped"_s;
inline const QString mayBeLate =
    u"%1: a command before had no reply in time; what came now may be its reply"_s;
inline const QString newestPieceAlone =
    u"%1: several pieces have arrived since the command; the box shows the newest one alone"_s;
inline const QString wasReset =
    u"%1: the connection was reset by the peer; what it had not sent yet is lost"_s;
inline const QString piecesUnsent = u"TCP/IP-2: the rest of the command was not sent: %1"_s;
inline const QString anotherFollowed = u"another command followed"_s;
inline const QString connectionEnded = u"the connection has ended"_s;
/// "%1" is the time of the newest one.
inline const QString loopBeganAnew =
    u"TCP/IP-2: at %1 a reply did not come; the loop began its command anew without the rest"_s;

inline const QString idnCommand = u"*IDN?"_s;
inline const QString systErrCommand = u"syst:err?"_s;

/// Where an open Channel is connected.
inline const QString connectedTo = u"Connected to %1"_s;
/// On IEEE 488 the place is the address and what serves its board; the board that is served and the
/// address that is not.
inline const QString placeThrough = u"%1 through %2"_s;
inline const QString placeElsewhere = u"board GPIB%1, not to %2"_s;
/// In the status line.
inline const QString nothingToDisconnect =
    u"IEEE 488: Disconnect ends nothing; the board stays configured for the next command"_s;
inline const QString connectingGpib = u"IEEE 488: connecting to %1 ..."_s;

inline const QString portOpen = u"Port Open"_s;
inline const QString portClosed = u"Port Closed"_s;
/// By the socket's state 0..8; a state of 9 or more leaves the text as it is.
inline const std::array<QString, 9> socketStates = {u"Socket Closed"_s,
                                                    u"Socket Open"_s,
                                                    u"Socket Listening"_s,
                                                    u"Socket Connection Pending"_s,
                                                    u"Socket Resolving host"_s,
                                                    u"Socket Host resolved"_s,
                                                    u"Socket Connecting"_s,
                                                    u"Socket Connected"_s,
                                                    u"Socket Peer is closing the connection"_s};

/// "%1" is how many characters of a reply the log takes.
inline const QString logShortened =
    u"The log takes the newest %1 characters of a reply; one was longer"_s;
/// Follows the reason why a record could not be written.
inline const QString logTorn = u"; a part of the last record stays in the file"_s;
inline const QString logOverflow =
    u"Text Box > 32000 Characters: Buffer Over Run: Text Box Reset"_s;

} // namespace corvane::channelTexts
