// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QList>
#include <QString>

#include <optional>

/// The board window's fixed texts, letter by letter, misspellings and double blanks included.
namespace corvane::boardTexts {

inline const QString boardCaption = u"VXM250 Calibration Utility"_s;
inline const QString noResponse = u"NO RESPONSE"_s;
inline const QString invalidData = u"Error: data is invalid."_s;
inline const QString voltsInBertan =
    u"Warning, you can not send data in volts while using the Bertan command set."_s;

inline const QString dacRangeHex = u"Range: 0000 to FFFF hex"_s;
inline const QString dacRangeVolts = u"Range: 0 to 2.5 volts"_s;
inline const QString ioRangeHex = u"Range: 00 to FF hex"_s;
inline const QString ioRangeDecimal = u"Range: 0 to 255 decimal"_s;

inline const QString meterWarningTitle = u"Keithly Connection Warning!"_s;
inline const QString meterWarning =
    u"To calibrate the VXM250 you must be connected to the Kiethly over IEEE. If you are already "
    "connected to the Kiethly over IEEE, Press Yes to continue.  If not, press No to cancel the "
    "calibration."_s;
inline const QString moveSensor = u"Move Keithly sensor to channel %1"_s;
inline const QString badChannel = u"The channel must be a number from 0 to 7.  Nothing was sent."_s;
inline const QString badMeterAddress =
    u"The meter's GPIB address must be a whole number from 0 to 30.  Nothing was sent."_s;

inline const QString done = u"Done"_s;
inline const QString doneBut = u"Done, but %1"_s;
inline const QString cancelling = u"Cancelling"_s;
inline const QString cancelledAt = u"Cancelled at %1"_s;
/// The place, then the cause.
inline const QString stoppedAt = u"Stopped at %1: %2"_s;
/// Behind the place of a calibration.
inline const QString leftWith = u", left with %1"_s;
inline const QString leftAsBefore = u", left as it was"_s;

/// Of a cell or a step.
inline const QString noAnswer = u"no answer from the %1"_s;
inline const QString noNumberFrom = u"no number from the %1"_s;
/// What was measured or tried may be of two boards.
inline const QString methodChanged = u"the communications method was changed on the way"_s;
inline const QString calibratedElsewhere =
    u"what is not saved was calibrated over another communications method"_s;
inline const QString cutAnswer = u"The answer has no end of line: it may be cut"_s;
inline const QString boardForMeter =
    u"not the meter's reading, which Scan All takes by the IEEE method only"_s;
inline const QString severalAnswers = u"more than one answer from the %1"_s;
inline const QString noValue = u"no value"_s;
inline const QString fromNoReading = u"computed without a reading"_s;
inline const QString notAsSent = u"not as sent"_s;
inline const QString noNumber = u"no number"_s;
inline const QString gainOutside = u"outside 0.5 to 2"_s;
inline const QString offsetOutside = u"beyond 0.5 V"_s;

inline const QString sendingDac = u"sending to DAC %1 of 0 to 7"_s;
inline const QString readingAdc = u"reading ADC %1 of 0 to 7"_s;
inline const QString dacNotSent = u"nothing was sent to %1"_s;
inline const QString noAdcValue = u"no value from %1"_s;

inline const QString unsaved = u"not saved to EEPROM: %1"_s;
inline const QString unfinished = u"calibration unfinished: %1"_s;
inline const QString eepromSent =
    u"Save to EEPROM: CAL:PIC was sent; the board does not confirm it"_s;
inline const QString eepromNotSent = u"Save to EEPROM: not sent: %1"_s;
inline const QString closedUnsaved = u"VXM250E window closed.  %1"_s;

inline const QString channelClosed = u"the Channel was closed"_s;
inline const QString lateAnswer = u"A late answer to an earlier command came and was dropped."_s;

inline const QString directionFailed =
    u"Error testing direction register, port %1, data= %2 ,expected%3"_s;
inline const QString writeTestPassed = u"Testing write direction register PASSED"_s;
inline const QString writeTestFailed = u"Testing write direction register FAILED"_s;
inline const QString installLoopBack = u"Install Loop Back connector now"_s;
inline const QString loopBackError = u"error"_s;
inline const QString loopBackPassed = u"Testing readback data loop back PASSED, remove jumper"_s;
inline const QString loopBackFailed = u"Testing readback data loop back FAILED, remove jumper"_s;

/// The name in the progress line; the port or pair, the bit.
inline const QString writeTest = u"Write test"_s;
inline const QString readbackTest = u"Readback test"_s;
inline const QString testPassed = u"%1 passed"_s;
inline const QString testFailed = u"%1 failed"_s;
inline const QString testUnanswered = u" (%1 steps without an answer)"_s;
inline const QString testStep = u"%1, port %2, bit %3"_s;
inline const QString testDirections = u"%1, setting the directions"_s;

inline const QString unlockPhrase = u"Adm X/R"_s;
inline const QString serialNumberSent = u"New serial number sent."_s;
inline const QString serialNumberRefused = u"Syntax Error.  Send Canceled"_s;
inline const QString tcpipError = u"error"_s;

inline const QString notSendable =
    u"The command holds a character that cannot be sent.  Nothing was sent."_s;

/// "channel 3", "channels 0 to 2, 5", of channels in rising order.
QString channelList(const QList<int> &channels);
/// "Channel 3: meter at 0.5 V, about 7 s left"; without the figure when the time is not known.
QString progress(const QString &place, std::optional<int> leftMs);

} // namespace corvane::boardTexts
