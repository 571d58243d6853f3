#pragma once

#include "core/board/modSBC.h"

#include <array>

/// The report's and its window's fixed texts, letter by letter, double blanks included.
namespace corvane::reportTexts {

inline const QString caption = QStringLiteral("VXM250 Calibration File Info");

/// The maker's address and telephone, the report's second line: put the maker's own data here.
inline const QString makerAddress =
    QStringLiteral("  1 Example Street, Example Town 00000  Telephone 000-000-0000");

/// A line above the grid: a text, or a label with the field that follows it after one more blank.
struct Line
{
    QString label;
    QString ReportFields::*field = nullptr;
};

inline const std::array<Line, 21> lines = {{
    {QStringLiteral("BRENNICK CORPORATION")},
    {makerAddress},
    {QStringLiteral("  VXM250 Calibration Report")},
    {QStringLiteral("  VXM250E - Single Board Computer")},
    {},
    {QStringLiteral("PRODUCT INFORMATION")},
    {QStringLiteral("  Serial Number: "), &ReportFields::serialNum},
    {QStringLiteral("  PIC Firmware: "), &ReportFields::picFirmWare},
    {QStringLiteral("  Part Number: "), &ReportFields::partNum},
    {QStringLiteral("  Rabbit Firmware: "), &ReportFields::rabbitVersion},
    {QStringLiteral("TEST INFORMATION")},
    {QStringLiteral("  File Name: "), &ReportFields::fileName},
    {QStringLiteral("  Test Date: "), &ReportFields::date},
    {QStringLiteral("  Test Utility Version: "), &ReportFields::appVer},
    {QStringLiteral("  Technician: "), &ReportFields::yourName},
    {QStringLiteral("TEST METER")},
    {QStringLiteral("  Name: "), &ReportFields::meterName},
    {QStringLiteral("  Model: "), &ReportFields::meterModel},
    {QStringLiteral("  Calibration Due: "), &ReportFields::meterCalDue},
    {QStringLiteral("  ADI Number: "), &ReportFields::meterADINum},
    {},
}};

inline const QString gridHeading =
    QStringLiteral("SETTING    \tChan0    Chan1    Chan2    Chan3    Chan4    Chan5    Chan6    "
                   "Chan7    ");

inline const QString syntaxError = QStringLiteral("SYNTAX ERROR: ");
inline const QString busy = QStringLiteral("BUSY: the board window is at work");
inline const QString notSaved =
    QStringLiteral("BUSY: the board window is at work, nothing was saved");
inline const QString printSuccessful = QStringLiteral("Print Successful");
/// The field's name and the character that does not fit the file.
QString notWritable(const QString &field, const QString &character);

/// Why PrintCals came to its error handler.
enum class PrintError { None, Cancelled, InvalidName, Other };

/// What the error handler shows; empty: nothing. `description` is Other's own.
QString printErrorText(PrintError error, const QString &path, const QString &description);

} // namespace corvane::reportTexts
