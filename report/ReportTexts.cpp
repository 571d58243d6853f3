#include "report/ReportTexts.h"

namespace corvane::reportTexts {

QString printErrorText(PrintError error, const QString &path, const QString &description)
{
    switch (error) {
    case PrintError::None:
        return QStringLiteral("Export successful.\r\n\r\n") + path;
    case PrintError::InvalidName:
        return QStringLiteral(
            "Invalid file name.\r\n\r\n"
            "To get the file name, connect to the VXM250, press the Auto Fill button then press "
            "the Generate Filename button. \r\n\r\n"
            "The file name will be automatically generated from a combination of the part number "
            "and serial number.");
    case PrintError::Other:
        return description;
    case PrintError::Cancelled:
        break;
    }
    return {};
}

} // namespace corvane::reportTexts
