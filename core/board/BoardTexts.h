#pragma once

#include <QList>
#include <QString>

#include <optional>

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
inline const QString badMeterAddress = QStringLiteral(
    "The meter's GPIB address must be a whole number from 0 to 30.  Nothing was sent.");

inline const QString done = QStringLiteral("Done");
inline const QString doneBut = QStringLiteral("Done, but %1");
inline const QString cancelling = QStringLiteral("Cancelling");
inline const QString cancelledAt = QStringLiteral("Cancelled at %1");
/// The place, then the cause.
inline const QString stoppedAt = QStringLiteral("Stopped at %1: %2");
/// Behind the place of a calibration.
inline const QString leftWith = QStringLiteral(", left with %1");
inline const QString leftAsBefore = QStringLiteral(", left as it was");

/// Of a cell or a step.
inline const QString noAnswer = QStringLiteral("no answer from the %1");
inline const QString noNumberFrom = QStringLiteral("no number from the %1");
inline const QString severalAnswers = QStringLiteral("more than one answer from the %1");
inline const QString noValue = QStringLiteral("no value");
inline const QString fromNoReading = QStringLiteral("computed without a reading");
inline const QString notAsSent = QStringLiteral("not as sent");
inline const QString noNumber = QStringLiteral("no number");
inline const QString gainOutside = QStringLiteral("outside 0.5 to 2");
inline const QString offsetOutside = QStringLiteral("beyond 0.5 V");

inline const QString sendingDac = QStringLiteral("sending to DAC %1 of 0 to 7");
inline const QString readingAdc = QStringLiteral("reading ADC %1 of 0 to 7");
inline const QString dacNotSent = QStringLiteral("nothing was sent to %1");
inline const QString noAdcValue = QStringLiteral("no value from %1");

inline const QString unsaved = QStringLiteral("not saved to EEPROM: %1");
inline const QString unfinished = QStringLiteral("calibration unfinished: %1");
inline const QString eepromSent =
    QStringLiteral("Save to EEPROM: CAL:PIC was sent; the board does not confirm it");
inline const QString eepromNotSent = QStringLiteral("Save to EEPROM: not sent: %1");
inline const QString closedUnsaved = QStringLiteral("VXM250E window closed.  %1");

inline const QString channelClosed = QStringLiteral("the Channel was closed");
inline const QString lateAnswer =
    QStringLiteral("A late answer to an earlier command came and was dropped.");

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

/// The name in the progress line; the port or pair, the bit.
inline const QString writeTest = QStringLiteral("Write test");
inline const QString readbackTest = QStringLiteral("Readback test");
inline const QString testPassed = QStringLiteral("%1 passed");
inline const QString testFailed = QStringLiteral("%1 failed");
inline const QString testUnanswered = QStringLiteral(" (%1 steps without an answer)");
inline const QString testStep = QStringLiteral("%1, port %2, bit %3");
inline const QString testDirections = QStringLiteral("%1, setting the directions");

inline const QString unlockPhrase = QStringLiteral("Adm X/R");
inline const QString serialNumberSent = QStringLiteral("New serial number sent.");
inline const QString serialNumberRefused = QStringLiteral("Syntax Error.  Send Canceled");
inline const QString tcpipError = QStringLiteral("error");

inline const QString notSendable =
    QStringLiteral("The command holds a character that cannot be sent.  Nothing was sent.");

/// "channel 3", "channels 0 to 2, 5", of channels in rising order.
QString channelList(const QList<int> &channels);
/// "Channel 3: meter at 0.5 V, about 7 s left"; without the figure when the time is not known.
QString progress(const QString &place, std::optional<int> leftMs);

} // namespace corvane::boardTexts
