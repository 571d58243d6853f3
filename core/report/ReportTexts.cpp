// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/report/ReportTexts.h"

#include "core/text/Numbers.h"

#include <QList>

namespace corvane::reportTexts {

QString notWritable(const QString &field, const QString &character)
{
    const auto code = static_cast<int>(character.toUcs4().value(0));
    return u"The field \"%1\" holds a character that cannot be written to the report: "
           "\"%2\" (U+%3).  Nothing was written."_s.arg(
               field, character, numbers::toHex(code).rightJustified(4, u'0'));
}

QString printErrorText(PrintError error, const QString &path, const QString &description)
{
    switch (error) {
    case PrintError::None:
        return u"Export successful.\r\n\r\n"_s + path;
    case PrintError::InvalidName:
        return u"Invalid file name.\r\n\r\n"
               "To get the file name, connect to the VXM250, press the Auto Fill button then press "
               "the Generate Filename button. \r\n\r\n"
               "The file name will be automatically generated from a combination of the part "
               "number "
               "and serial number."_s;
    case PrintError::Other:
        return description;
    case PrintError::Cancelled:
        break;
    }
    return {};
}

} // namespace corvane::reportTexts
