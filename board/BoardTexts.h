#pragma once

#include "board/BoardChannels.h"

#include <QString>

/// The board window's fixed texts, letter by letter, misspellings and double blanks included.
namespace corvane::boardTexts {

inline const QString boardCaption = QStringLiteral("VXM250 Calibration Utility");
inline const QString noResponse = QStringLiteral("NO RESPONSE");
inline const QString invalidData = QStringLiteral("Error: data is invalid.");
inline const QString voltsInBertan =
    QStringLiteral("Warning, you can not send data in volts while using the Bertan command set.");

inline const QString dacRangeHex = QStringLiteral("Range: 0000 to FFFF hex");
inline const QString dacRangeVolts = QStringLiteral("Range: 0 to 2.5 volts");
inline const QString ioRangeHex = QStringLiteral("Range: 00 to FF hex");
inline const QString ioRangeDecimal = QStringLiteral("Range: 0 to 255 decimal");

inline const QString meterWarningTitle = QStringLiteral("Keithly Connection Warning!");
inline const QString meterWarning = QStringLiteral(
    "To calibrate the VXM250 you must be connected to the Kiethly over IEEE. If you are already "
    "connected to the Kiethly over IEEE, Press Yes to continue.  If not, press No to cancel the "
    "calibration.");
inline const QString moveSensor = QStringLiteral("Move Keithly sensor to channel %1");
inline const QString badChannel =
    QStringLiteral("The channel must be a number from 0 to 7.  Nothing was sent.");
inline const QString badMeterAddress =
    QStringLiteral("The meter's GPIB address must be a number.  Nothing was sent.");

inline const QString directionFailed =
    QStringLiteral("Error testing direction register, port %1, data= %2 ,expected%3");
inline const QString writeTestPassed = QStringLiteral("Testing write direction register PASSED");
inline const QString writeTestFailed = QStringLiteral("Testing write direction register FAILED");
inline const QString installLoopBack = QStringLiteral("Install Loop Back connector now");
inline const QString loopBackError = QStringLiteral("error");
inline const QString loopBackPassed =
    QStringLiteral("Testing readback data loop back PASSED, remove jumper");
inline const QString loopBackFailed =
    QStringLiteral("Testing readback data loop back FAILED, remove jumper");

inline const QString unlockPhrase = QStringLiteral("Adm X/R");
inline const QString serialNumberSent = QStringLiteral("New serial number sent.");
inline const QString serialNumberRefused = QStringLiteral("Syntax Error.  Send Canceled");
inline const QString tcpipError = QStringLiteral("error");

inline const QString notSendable =
    QStringLiteral("The command holds a character that cannot be sent.  Nothing was sent.");

/// "The RS-232 Channel is in use: ...", for a message box or a status panel's tool tip.
QString channelInUse(int channel, ChannelUse use);

} // namespace corvane::boardTexts
