// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/Numbers.h"

#include "tests/support/Testing.h"

using namespace corvane;

TEST(Numbers, TheLeadingNumberOfATextIsReadAsFarAsItGoes)
{
    struct Row
    {
        const char16_t *text;
        double value;
    };
    const Row rows[] = {
        {u"25", 25},   {u"  25 ", 25},  {u"25abc", 25}, {u"1e3", 1000},  {u"1e", 1},
        {u"1e+", 1},   {u"-.5V", -0.5}, {u"+7", 7},     {u".", 0},       {u"-", 0},
        {u"", 0},      {u"abc", 0},     {u"0x19", 0},   {u"1.5.2", 1.5}, {u"5.", 5},
        {u"1e999", 0}, {u"nan", 0},     {u"inf", 0},    {u"1,5", 1},
    };
    for (const Row &row : rows)
        EXPECT_EQ(numbers::leadingNumber(row.text), row.value)
            << QString::fromUtf16(row.text).toStdString();
}

TEST(Numbers, OnlyAWholeFiniteDecimalNumberIsNumeric)
{
    for (const char16_t *text : {u"25", u" 25 ", u"-0", u"25.0", u".5", u"5.", u"1e3", u"+1E-3"})
        EXPECT_TRUE(numbers::isNumeric(text)) << QString::fromUtf16(text).toStdString();
    for (const char16_t *text :
         {u"", u" ", u"25abc", u"0x19", u".", u"1e", u"1e999", u"nan", u"2,5", u"1 2", u"--1"})
        EXPECT_FALSE(numbers::isNumeric(text)) << QString::fromUtf16(text).toStdString();
}

TEST(Numbers, WrittenNumbersLeadWithABlankOrAMinusAndNoZeroBeforeThePoint)
{
    EXPECT_EQ(numbers::numberText(3), u" 3");
    EXPECT_EQ(numbers::numberText(0), u" 0");
    EXPECT_EQ(numbers::numberText(-3), u"-3");
    EXPECT_EQ(numbers::numberText(0.5), u" .5");
    EXPECT_EQ(numbers::numberText(-0.25), u"-.25");
    EXPECT_EQ(numbers::numberText(2.0), u" 2");
    EXPECT_EQ(numbers::numberText(0.0), u" 0");
}

TEST(Numbers, FiveDecimalsKeepTextsThatAreNoNumber)
{
    EXPECT_EQ(numbers::fixed5(2.5), u"2.50000");
    EXPECT_EQ(numbers::fixed5(-0.000001), u"0.00000");
    EXPECT_EQ(numbers::fixed5(u" -.25 "_s), u"-0.25000");
    EXPECT_EQ(numbers::fixed5(u"DAC Value"_s), u"DAC Value");
    EXPECT_EQ(numbers::fixed5(QString()), QString());
}

TEST(Numbers, HexadecimalIsReadWholeOrNotAtAllAndWrittenBare)
{
    EXPECT_EQ(numbers::fromHex(u"FFFF"), 65535);
    EXPECT_EQ(numbers::fromHex(u" 0f "), 15);
    EXPECT_EQ(numbers::fromHex(u"FFFFFFFF"), 4294967295);
    for (const char16_t *none :
         {u"", u" ", u"G1", u"8000G", u"1.5", u"0x8000", u"8 0", u"-1", u"100000000"})
        EXPECT_EQ(numbers::fromHex(none), std::nullopt) << QString::fromUtf16(none).toStdString();
    EXPECT_EQ(numbers::toHex(32768), u"8000");
    EXPECT_EQ(numbers::toHex(0), u"0");
}

TEST(Numbers, AnIntegerIsRoundedAndKeptInItsRange)
{
    EXPECT_EQ(numbers::leadingInteger(u"16"), 16);
    EXPECT_EQ(numbers::leadingInteger(u"2.5"), 2);
    EXPECT_EQ(numbers::leadingInteger(u"3.5x"), 4);
    EXPECT_EQ(numbers::leadingInteger(u"1e20"), 2147483647);
    EXPECT_EQ(numbers::leadingInteger(u"-1e20"), -2147483648);
}

TEST(Numbers, SinglePrecisionRoundsAndIsInfiniteBeyondItsRange)
{
    EXPECT_EQ(numbers::single(0.1), 0.1F);
    EXPECT_EQ(numbers::single(3.4e38), 3.4e38F);
    EXPECT_EQ(numbers::single(1e40), INFINITY);
    EXPECT_EQ(numbers::single(-1e40), -INFINITY);
}
