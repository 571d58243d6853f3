// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/BenchWindow.h"

#include "bench/Bench.h"
#include "bench/Replay.h"
#include "tests/bench/ReplaySupport.h"
#include "tests/support/Soon.h"
#include "windows/main/OrderEntry.h"

using namespace corvane;

namespace {

struct BenchDesk : testing::Test
{
    bench::Bench devices{{.chamberPort = 0,
                          .boardPort = 0,
                          .gpibPort = 0,
                          .secondGpibPort = std::nullopt,
                          .linkFolder = {}}};
    const bool started = devices.start();
    BenchWindow window{devices, &devices};

    /// Selects an order and fills its fields by name ("txtFault_slow_0=20", "chkFault_slow_1").
    static void choose(const OrderEntry &entry, const QString &word, const QString &fields = {})
    {
        entry.cboOrder->setCurrentText(word);
        for (const QString &field : fields.split(u';', Qt::SkipEmptyParts)) {
            const QString name = field.section(u'=', 0, 0);
            const QString value = field.section(u'=', 1);
            if (auto *text = entry.findChild<QLineEdit *>(name))
                text->setText(value);
            else if (auto *choice = entry.findChild<QComboBox *>(name))
                choice->setCurrentText(value);
            else
                entry.findChild<QCheckBox *>(name)->setChecked(true);
        }
    }
    [[nodiscard]] QString shownState(int row) const
    {
        return window.lstPlaces->topLevelItem(row)->text(2);
    }
    void select(int row) { window.lstPlaces->setCurrentItem(window.lstPlaces->topLevelItem(row)); }
};

} // namespace

TEST_F(BenchDesk, EveryFaultIsOrderedAtEveryPlaceWithItsValuesAndCleared)
{
    ASSERT_TRUE(started);
    const auto places = static_cast<int>(devices.places().size());
    ASSERT_EQ(window.lstPlaces->topLevelItemCount(), places);
    EXPECT_EQ(window.fault->cboOrder->count(), int(bench::Fault::choices().size()));
    for (int row = 0; row < places; ++row) {
        select(row);
        for (const bench::OrderText &choice : bench::Fault::choices()) {
            choose(*window.fault, choice.word);
            window.cmdFault->click();
            EXPECT_TRUE(window.lblAnswer->text().endsWith(u": done")) << row;
            const bench::Fault &fault = devices.places()[size_t(row)].faults->fault();
            EXPECT_EQ(fault, bench::Fault::parse(choice.word));
            EXPECT_TRUE(shownState(row).startsWith(fault.toString()));
        }
        EXPECT_TRUE(shownState(row).startsWith(u"unplug"));
        window.cmdClear->click();
        EXPECT_TRUE(shownState(row).startsWith(u"none")) << row;
    }
    const std::pair<const char16_t *, const char16_t *> rows[] = {
        {u"slow txtFault_slow_0=20;chkFault_slow_1", u"slow 20 once"},
        {u"flood txtFault_flood_0=;txtFault_flood_1=7", u"flood 10000000 7"},
        {u"garbage txtFault_garbage_0=1e40\\r", u"garbage 1e40\\x0d"}};
    for (const auto &[entered, ordered] : rows) {
        const QString text = QString::fromUtf16(entered);
        choose(*window.fault, text.section(u' ', 0, 0), text.section(u' ', 1));
        window.cmdFault->click();
        EXPECT_EQ(devices.places().back().faults->fault().toString(), QString::fromUtf16(ordered));
    }
    choose(*window.fault, u"slow"_s, u"txtFault_slow_0=long"_s);
    window.cmdFault->click();
    EXPECT_TRUE(window.lblAnswer->text().contains(u"There is no fault"));
    devices.order(devices.places().back().name + u" slow 5 once"_s); // by another way
    devices.places().back().faults->spoil({{0, "used up", true}});
    window.show();
    EXPECT_TRUE(soon([&] { return shownState(places - 1) == u"none"; }));
    window.close();
    EXPECT_FALSE(window.tmrState->isActive());
}

TEST_F(BenchDesk, TheBoardAndTheMeterObeyAndWhatIsShownIsTheirs)
{
    devices.board().answer("DAC 4,1");
    window.tmrState_Timer();
    EXPECT_EQ(window.cboSensor->currentIndex(), 0) << "follows";
    window.cboSensor->setCurrentIndex(3);
    window.cboSensor_Click();
    EXPECT_EQ(devices.meter().sensorChannel(), 2);
    devices.order(u"sensor 7"_s);
    devices.order(u"connector on"_s);
    window.tmrState_Timer();
    EXPECT_EQ(window.cboSensor->currentIndex(), 8);
    window.cboSensor->setCurrentIndex(0);
    window.cboSensor_Click();
    EXPECT_EQ(devices.meter().sensorChannel(), 4);
    EXPECT_TRUE(window.chkConnector->isChecked());
    window.chkConnector->click();
    EXPECT_FALSE(devices.board().ports().connector());

    const std::pair<QString, QString> rows[] = {
        {u"stuck"_s,
         u"cboOrder_stuck_0=dir;txtOrder_stuck_1=2;txtOrder_stuck_2=6;cboOrder_stuck_3=1"_s},
        {u"meter"_s, u"cboOrder_meter_0=overflow"_s},
        {u"serial"_s, u"txtOrder_serial_0=08/0042"_s}};
    for (const auto &[word, fields] : rows) {
        choose(*window.order, word, fields);
        window.cmdOrder->click();
        EXPECT_TRUE(window.lblAnswer->text().endsWith(u": done")) << word.toStdString();
    }
    EXPECT_EQ(window.lblState->text(),
              u"connector off, stuck dir 2 6 1, sensor follows, on channel "
              u"4, meter overflow, serial 08/0042");
    choose(*window.order, u"free"_s);
    window.cmdOrder->click();
    EXPECT_TRUE(devices.board().ports().stuckBits().empty());
    choose(*window.order, u"stuck"_s, u"txtOrder_stuck_1=4"_s);
    window.cmdOrder->click();
    EXPECT_TRUE(window.lblAnswer->text().contains(u"Use: stuck data|dir PORT BIT 0|1"));
}

TEST(ReplayedBenchWindow, ShowsTheRecordingAndItsPlacesAndNoBoard)
{
    bench::RecordingFile file;
    bench::Replay replay(file.write({"1 RS-232 > A\r", "2 RS-232 < a", "wrong"}).read(),
                         bench::Replay::Pace::Recorded);
    ASSERT_TRUE(replay.start());
    BenchWindow window(replay, nullptr);
    EXPECT_EQ(window.lstPlaces->topLevelItemCount(), 1);
    EXPECT_TRUE(
        window.lblState->text().endsWith(u"r.jsonl: 1 exchange\nline 4: it is no JSON object"_s));
    EXPECT_EQ(window.chkConnector, nullptr);
    EXPECT_EQ(window.order->text(), u"rewind");
    window.cmdOrder->click();
    EXPECT_EQ(window.lblAnswer->text(), u"rewind: done");
    bench::PtyUser user(replay.serialDevices().value(2));
    user.send("B\r");
    EXPECT_TRUE(soon([&] {
        window.tmrState_Timer();
        return window.lblState->text().contains(u"1 unknown request, the last on RS-232: \"B\""_s);
    }));
}
