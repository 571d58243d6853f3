// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/modSBC.h"
#include "devices/Literals.h"

#include <array>

/// The report's and its window's fixed texts, letter by letter, double blanks included.
namespace corvane::reportTexts {

inline const QString caption = u"VXM250 Calibration File Info"_s;

/// The maker's address and telephone, the report's second line: put the maker's own data here.
inline const QString makerAddress =
    u"  1 Example Street, Example Town 00000  Telephone 000-000-0000"_s;

/// A line above the grid: a text, or a label with the field that follows it after one more blank.
struct Line
{
    QString label;
    QString ReportFields::*field = nullptr;
};

inline const std::array<Line, 21> lines = {{
    {u"BRENNICK CORPORATION"_s},
    {makerAddress},
    {u"  VXM250 Calibration Report"_s},
    {u"  VXM250E - Single Board Computer"_s},
    {},
    {u"PRODUCT INFORMATION"_s},
    {u"  Serial Number: "_s, &ReportFields::serialNum},
    {u"  PIC Firmware: "_s, &ReportFields::picFirmWare},
    {u"  Part Number: "_s, &ReportFields::partNum},
    {u"  Rabbit Firmware: "_s, &ReportFields::rabbitVersion},
    {u"TEST INFORMATION"_s},
    {u"  File Name: "_s, &ReportFields::fileName},
    {u"  Test Date: "_s, &ReportFields::date},
    {u"  Test Utility Version: "_s, &ReportFields::appVer},
    {u"  Technician: "_s, &ReportFields::yourName},
    {u"TEST METER"_s},
    {u"  Name: "_s, &ReportFields::meterName},
    {u"  Model: "_s, &ReportFields::meterModel},
    {u"  Calibration Due: "_s, &ReportFields::meterCalDue},
    {u"  ADI Number: "_s, &ReportFields::meterADINum},
    {},
}};

inline const QString gridHeading =
    u"SETTING    \tChan0    Chan1    Chan2    Chan3    Chan4    Chan5    Chan6    "
    "Chan7    "_s;

inline const QString syntaxError = u"SYNTAX ERROR: "_s;
inline const QString busy = u"BUSY: the board window is at work"_s;
inline const QString notSaved = u"BUSY: the board window is at work, nothing was saved"_s;
inline const QString printSuccessful = u"Print Successful"_s;
/// The field's name and the character that does not fit the file.
QString notWritable(const QString &field, const QString &character);

/// Why PrintCals came to its error handler.
enum class PrintError { None, Cancelled, InvalidName, Other };

/// What the error handler shows; empty: nothing. `description` is Other's own.
QString printErrorText(PrintError error, const QString &path, const QString &description);

} // namespace corvane::reportTexts
