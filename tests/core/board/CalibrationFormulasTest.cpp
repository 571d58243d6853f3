// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/CalibrationFormulas.h"

#include "tests/support/Testing.h"

using namespace corvane;

TEST(CalibrationFormulas, AreWorkedOutInSinglePrecisionAsGiven)
{
    struct Row
    {
        CalibrationReadings readings; // meter low and high, ADC low and high
        CalibrationCoefficients expected;
    };
    for (const Row &row :
         {Row{{0.5F, 2, 0.5F, 2}, {1, 0, 1, 0}}, Row{{0.5F, 2.5F, 0.5F, 2}, {0.8F, 0, 1.25F, 0}},
          Row{{0.25F, 1.75F, 0.75F, 2.25F}, {1, 0.25F, 1, -0.5F}},
          Row{{0, 0, 0, 1}, {4, 0.5F, 0, 0}}, // a silent meter
          // 100000.01 is 100000.0078125 in single precision.
          Row{{0.5F, 2, 100000.01F, 100000.01F}, {1, 0, 4, -99999.5078125F}}})
        EXPECT_EQ(calculateCalibration(row.readings).coefficients, row.expected);
}

TEST(CalibrationFormulas, NameTheValueThatADivisionByZeroOrAnOverflowMadeImpossible)
{
    struct Row
    {
        CalibrationReadings readings;
        QString named;
    };
    const QString dac = u"DAC gain"_s;
    const QString adc = u"ADC gain"_s;
    for (const Row &row :
         {Row{{0.5F, 0, 0, 1}, dac}, Row{{0.5F, 1e-39F, 0, 1}, dac}, Row{{0, 0, 1, 1}, adc},
          Row{{0.5F, 2, 1, 0.5F}, adc}, Row{{3e38F, 2, -3e38F, 0}, adc}})
        EXPECT_TRUE(calculateCalibration(row.readings).impossible.contains(row.named));
}
