// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchSupport.h"
#include "bench/ChamberController.h"
#include "bench/Rs485Bus.h"

using namespace corvane::bench;

namespace {

class Chamber : public testing::Test
{
protected:
    qint64 now = 0;
    ChamberController chamber{[this] { return now; }, 5, "CH-1"};
};

} // namespace

TEST_F(Chamber, EveryFormOfACommandIsUnderstoodAndAnswered)
{
    expectReplies(chamber, {{"*IDN?", "BRENNICK,KT2000,R4.10,P2.30,CH-1"},
                            {"? SP", "25.0"},
                            {"= SP 30", "OK"},
                            {"? SP x;? = SP;SP;SP x", "30.0;30.0;30.0;30.0"},
                            {"sp -12.34;? sp", "OK;-12.3"},
                            {"? SN", "CH-1"},
                            {"? ID x", "KT2000"},
                            {"= NAME \"OVEN-2\";NAME", "OK;OVEN-2"},
                            {"= UUTNAME two words  kept", "OK"},
                            {"? UUTNAME", "two words  kept"},
                            {"= NAME \"A;B\";? NAME", "OK;A;B"},
                            {"; ;", "(silent)"}});
}

TEST_F(Chamber, AWrongCommandIsAnsweredWithItsErrorAndChangesNothing)
{
    expectReplies(chamber, {{"= SP 500", "ERROR -222,\"Data out of range\""},
                            {"= SP hot", "ERROR -104,\"Data type error\""},
                            {"= SP", "ERROR -109,\"Missing parameter\""},
                            {"= PV 3", "ERROR -203,\"Command protected\""},
                            {"? NONE", "ERROR -113,\"Undefined header\""},
                            {"?", "ERROR -113,\"Undefined header\""},
                            {"= SPHI 40", "OK"},
                            {"= SP 40.1", "ERROR -222,\"Data out of range\""},
                            {"? SP", "25.0"},
                            {"SYST:ERR?", "-222,\"Data out of range\""},
                            {"syst:err?", "-104,\"Data type error\""},
                            {"*cls", "OK"},
                            {"system:error?", "0,\"No error\""}});
    for (int i = 0; i < 12; ++i)
        ask(chamber, "FOO");
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(ask(chamber, "SYST:ERR?"), "-113,\"Undefined header\"");
    EXPECT_EQ(ask(chamber, "SYST:ERR?"), "-350,\"Queue overflow\"");
    EXPECT_EQ(ask(chamber, "SYST:ERR?"), "0,\"No error\"");
}

TEST_F(Chamber, OnlyTheAddressedOneAnswersOnTheBus)
{
    ChamberController other([this] { return now; }, 1, "CH-2");
    Rs485Bus bus({&chamber, &other});
    expectReplies(bus, {{">05 ? SN", "<05:CH-1"},
                        {">01 ? SN", "<01:CH-2"},
                        {">1 ? SN", "<01:CH-2"},
                        {">07 ? SN", "(silent)"},
                        {"? SN", "(silent)"},
                        {">05", "(silent)"},
                        {">xx ? SN", "(silent)"},
                        {">05 = ADDR 12", "<05:OK"},
                        {">05 ? SN", "(silent)"},
                        {">12 ? SN", "<12:CH-1"}});
}

TEST_F(Chamber, EverySettingReadsBackAsItIsWrittenAndTakesItsOwnValueAgain)
{
    EXPECT_GE(ChamberSettings::table().size(), 20U);
    for (const ChamberSetting &setting : ChamberSettings::table()) {
        if (QByteArray(setting.name) == "ADDR")
            continue;
        const QByteArray query = QByteArray("? ") + setting.name;
        EXPECT_EQ(ask(chamber, query), setting.initial);
        EXPECT_EQ(ask(chamber, QByteArray("= ") + setting.name + ' ' + setting.initial), "OK");
        EXPECT_EQ(ask(chamber, query), setting.initial);
    }
    for (const char *name : {"PV", "HPV", "ALARM", "ID", "SN"})
        EXPECT_NE(ask(chamber, QByteArray("? ") + name).substr(0, 5), "ERROR") << name;
}

TEST_F(Chamber, TemperatureAndHumidityMoveToTheirSetPointsAtTheRampRate)
{
    expectReplies(chamber, {{"? PV", "23.00"}, {"= SP 33", "OK"}, {"= HSP 15", "OK"}});
    now += 4000;
    expectReplies(chamber, {{"? PV", "27.00"}, {"? HPV", "41.00"}, {"= RAMP 30", "OK"}});
    now += 4000;
    expectReplies(chamber, {{"? PV", "29.00"}, {"? HPV", "37.00"}, {"= RUN 0", "OK"}});
    now += 4000;
    expectReplies(chamber, {{"? PV", "29.00"}, {"? ALARM", "0"}, {"= ALHI 28", "OK"}});
    expectReplies(chamber, {{"? ALARM", "1"}, {"= RUN 1", "OK"}});
    now += 3600000;
    expectReplies(chamber, {{"? PV", "33.00"}, {"? HPV", "15.00"}});
}
