// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/report/CalibrationReport.h"

#include "core/report/ReportTexts.h"
#include "tests/support/Testing.h"

using namespace corvane;

namespace {

ReportFields fields()
{
    const auto text = [](const char *latin) { return QString::fromLatin1(latin); };
    return {text(" 1234-5 "),       text("07/0123"),  text("P3.0"),  text("R2.1"),
            text("1234-5_0123-07"), text("6/3/2026"), text("1.0.0"), text("J\xF6rg"),
            text("Meter"),          text("M\r\n1"),   QString(),     text("77")};
}

/// Channel n's DAC value is n, its other values are blank but for a few of channels 0 and 7.
CalibrationTable table()
{
    CalibrationTable result;
    for (int channel = 0; channel < CalibrationTable::channels; ++channel)
        result.setText(1, CalibrationTable::columnOf(channel), QString::number(channel));
    result.setText(2, 8, u"-0.25"_s);
    result.setText(2, 1, u"abc"_s);
    result.setText(2, 2, u"R-2"_s); // holds a minus sign: no blank in front
    result.setText(7, 1, u"2.00000"_s);
    return result;
}

} // namespace

TEST(CalibrationReport, IsThisFileByteForByte)
{
    const char *expected =
        "BRENNICK CORPORATION\r\n"
        "  1 Example Street, Example Town 00000  Telephone 000-000-0000\r\n"
        "  VXM250 Calibration Report\r\n"
        "  VXM250E - Single Board Computer\r\n"
        "\r\n"
        "PRODUCT INFORMATION\r\n"
        "  Serial Number:  07/0123\r\n"
        "  PIC Firmware:  P3.0\r\n"
        "  Part Number:  1234-5\r\n"
        "  Rabbit Firmware:  R2.1\r\n"
        "TEST INFORMATION\r\n"
        "  File Name:  1234-5_0123-07\r\n"
        "  Test Date:  6/3/2026\r\n"
        "  Test Utility Version:  1.0.0\r\n"
        "  Technician:  J\xF6rg\r\n"
        "TEST METER\r\n"
        "  Name:  Meter\r\n"
        "  Model:  M 1\r\n"
        "  Calibration Due:  \r\n"
        "  ADI Number:  77\r\n"
        "\r\n"
        "SETTING    \tChan0    Chan1    Chan2    Chan3    Chan4    Chan5    Chan6    Chan7    \r\n"
        "DAC Value\t 7.00000  6.00000  5.00000  4.00000  3.00000  2.00000  1.00000  0.00000 \r\n"
        "DAC Gain\t-0.25000           R-2  abc \r\n"
        "DAC Offset\t                \r\n"
        "ADC Value\t                \r\n"
        "ADC Gain\t                \r\n"
        "ADC Offset\t                \r\n"
        "Keithley   \t               2.00000 \r\n";
    const QByteArray report = calibrationReport::text(fields(), table()).toLatin1();
    EXPECT_EQ(report.toStdString(), expected);
}

TEST(CalibrationReport, TheIdentityIsReadFromAtLeastFiveFields)
{
    struct Row
    {
        const char *reply;
        const char *identity; // part, serial, PIC, Rabbit; empty: none
    };
    for (const Row &row :
         {Row{"ACME,P/N_1234-5,R2.1,P3.0,07/0123", "1234-5|07/0123|P3.0|R2.1"},
          Row{"ACME, p/n_P/NP/N_12p/n , R , P , 0\r\n7/1 \r\n", "12|07/1|P|R"},
          Row{"a,P/P/NN,r\r\n,p,s", "P/N|s|p|r"}, Row{",,,,", "|||"}, // one pass each
          Row{"a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p,q,r,s,t,u,v,w,x,y,z,1,2,3,4", "b|e|d|c"},
          Row{"a,b,c,d", ""}, Row{",", ""}, Row{"abcde", ""}, Row{"", ""}}) {
        QString read;
        if (const auto id = calibrationReport::parseIdentity(QString::fromLatin1(row.reply)))
            read = QStringList{id->partNum, id->serialNum, id->picFirmWare, id->rabbitVersion}.join(
                u'|');
        EXPECT_EQ(read.toStdString(), row.identity) << row.reply;
    }
}

TEST(CalibrationReport, TheFileNameIsPartSecondPieceFirstPiece)
{
    for (const auto &[serial, name] :
         {std::pair("07/0123", "1234-5_0123-07"), std::pair("1/2/3", "1234-5_2-1"),
          std::pair("/", "1234-5_-"), std::pair("070123", ""), std::pair("", "")})
        EXPECT_EQ(
            calibrationReport::fileName(u"1234-5"_s, QString::fromLatin1(serial)).toStdString(),
            name);
}

TEST(CalibrationReport, TheErrorHandlerHasATextForEachOutcome)
{
    using reportTexts::PrintError;
    using reportTexts::printErrorText;
    const QString path = u"/tmp/a.txt"_s;
    EXPECT_EQ(printErrorText(PrintError::None, path, {}),
              u"Export successful.\r\n\r\n/tmp/a.txt"_s);
    EXPECT_EQ(printErrorText(PrintError::Cancelled, path, {}), QString());
    EXPECT_EQ(printErrorText(PrintError::InvalidName, path, {}),
              u"Invalid file name.\r\n\r\nTo get the file name, connect to the "
              "VXM250, press the Auto Fill button then press the Generate Filename "
              "button. \r\n\r\nThe file name will be automatically generated from a "
              "combination of the part number and serial number."_s);
}
