// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/CheckRow.h"

#include "tests/support/Testing.h"

using namespace corvane;

namespace {

using Cell = CheckRow::Cell;

void expectAll(bool passed, Cell cell, std::initializer_list<std::array<const char *, 3>> checks)
{
    for (const auto &[reply, expected, tolerance] : checks) {
        const CheckRow check{QString::fromLatin1(reply), QString::fromLatin1(expected),
                             QString::fromLatin1(tolerance)};
        EXPECT_EQ(check.judge(), (CheckRow::Verdict{passed, cell}))
            << reply << " against " << expected << " within " << tolerance;
    }
}

} // namespace

// clang-format off

TEST(CheckRow, ANumberPassesUpToTheToleranceOnEitherSideTheEdgeIncluded)
{
    expectAll(true, Cell::Passed, {
        {"25.5", "25", "0.5"}, {"24.5", "25", "0.5"}, {"25.5", "25", "-0.5"}, {"25.0", "25", ""},
        {"26", "25", "1 degree"}});
    expectAll(false, Cell::Failed, {
        {"25.6", "25", "0.5"}, {"24.4", "25", "0.5"}, {"25.01", "25", ""},
        {"25.1", "25", "none"}, {"24", "25", ".9e0x"}});
}

TEST(CheckRow, ANumberIsReadWholeAndAnythingElseFails)
{
    expectAll(true, Cell::Passed, {
        {"1e3", "1000", ""}, {" 25 ", "25", ""}, {"-0", "0", ""}, {"25.0\r\n", "25", ""},
        {"2\r5", " 25", ""}, {"25", "\"25\"", ""}, {"25", "\" 25", ""}});
    expectAll(false, Cell::Failed, {
        {"25abc", "25", "100"}, {"0x19", "25", "100"}, {"", "25", "100"},
        {"\"25\"", "25", "100"}, {"nan", "25", "100"}});
}

// Near 1 two single-precision numbers are 2^-23 apart above and 2^-24 below; from 2^24 on they are
// 2 apart, and ties go to the even one. 25.3 - 25 is above 0.3 in double precision.
TEST(CheckRow, DifferencesAndToleranceAreRoundedToSinglePrecisionFirst)
{
    expectAll(true, Cell::Passed, {
        {"1.00000001", "0", "1"}, {"1", "0", "0.99999999"}, {"16777217", "0", "16777216"},
        {"0.3", "0.1", "0.2"}, {"25.3", "25", "0.3"}, {"1e-60", "0", ""}});
    expectAll(false, Cell::Failed, {
        {"1.0000001", "0", "1"}, {"1", "0", "0.9999999"}, {"16777219", "0", "16777216"},
        {"1e300", "0", "1e38"}, {"-1e300", "0", "1e300"}, {"1e300", "-1e300", "1"}});
}

TEST(CheckRow, ATextIsComparedCharacterByCharacterWithoutItsOuterQuotes)
{
    expectAll(true, Cell::Passed, {
        {"READY", "\"READY\"", ""}, {"READY", "READY", ""}, {"  READY\r\n", "\" READY \"", ""},
        {"A \"B\" C", R"("A "B" C")", ""}, {"READY", "\"READY", ""}, {"READY", "READY\"", ""}});
    expectAll(false, Cell::Failed, {
        {"ready", "READY", ""}, {"READX", "READY", ""}, {"REA", "READY", ""}, {"", "READY", ""},
        {"X", "", ""}, {"X", "\"\"", ""}});
    expectAll(false, Cell::Passed, {
        {"READY NOW", "\"READY\"", ""}});
    expectAll(true, Cell::Untouched, {
        {"", "", ""}, {"\r\n", "\"\"", ""}, {"", "\"", ""}});
}
