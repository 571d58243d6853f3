#include "bench/Text.h"

#include <gtest/gtest.h>

using namespace corvane::bench;

TEST(Text, ANumberIsTheWholeTextAndFinite)
{
    struct Row
    {
        const char *text;
        std::optional<double> value;
    };
    const Row rows[] = {
        {" 3", 3},   {" .5", 0.5},  {"2.50000", 2.5}, {"-.015", -0.015},
        {"+7", 7},   {"1e3", 1000}, {"5.", 5},        {"", {}},
        {".", {}},   {"1,5", {}},   {"2.5V", {}},     {"nan", {}},
        {"inf", {}}, {"1e999", {}}, {"+-1", {}},      {"0x19", {}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(text::number(row.text), row.value) << row.text;
    EXPECT_EQ(text::whole(" 255", 0, 255), 255);
    for (const char *wrong : {"256", "-1", "2.5", "", "FF"})
        EXPECT_FALSE(text::whole(wrong, 0, 255)) << wrong;
    EXPECT_EQ(text::hex(" 80fF "), 0x80FF);
    for (const char *wrong : {"", "G1", "FFFFF", "-1", "0x1", "8 0"})
        EXPECT_FALSE(text::hex(wrong)) << wrong;
}

TEST(Text, WrittenZeroHasNoMinus)
{
    EXPECT_EQ(text::fixed(-0.000001, 5), "0.00000");
    EXPECT_EQ(text::fixed(-0.4, 0), "0");
    EXPECT_EQ(text::fixed(-0.015, 5), "-0.01500");
}

TEST(Text, AHeaderMatchesInItsLongAndItsShortForm)
{
    for (const char *header : {"SYST:ERR?", "syst:err?", ":SYSTem:error?", "system:ERR?"})
        EXPECT_TRUE(text::matches(header, "SYSTem:ERRor?")) << header;
    for (const char *header : {"SYST:ERR", "SYS:ERR?", "SYSTem", "SYST:ERR:NEXT?", "ERR?", "", ":"})
        EXPECT_FALSE(text::matches(header, "SYSTem:ERRor?")) << header;
}

TEST(Text, EscapesStandForTheirBytes)
{
    EXPECT_EQ(text::unescaped("1\\r2\\n\\\\\\x41\\xfe\\q"), QByteArray("1\r2\n\\A\xfe\\q"));
    EXPECT_EQ(text::unescaped("\\x"), QByteArray(1, '\0'));
    EXPECT_EQ(text::unescaped("\\"), "\\");
}
