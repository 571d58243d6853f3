// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/traffic/TrafficWindow.h"

#include "core/traffic/TrafficRecorder.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/Soon.h"

#include <QHeaderView>

using namespace corvane;
using Outcome = Dialogs::FileChoice::Outcome;

namespace {

struct TrafficDesk : testing::Test
{
    TrafficDesk()
    {
        window.show();
        record(0, TrafficKind::Connected, "/dev/tty");
        record(0, TrafficKind::Sent, ">01 *IDN?\r");
        record(0, TrafficKind::Received, "<01:ONE\r\n");
        record(3, TrafficKind::Sent, "? PV\r");
        record(3, TrafficKind::Received, QByteArray("2\x80\0\xe9", 4));
        record(2, TrafficKind::TimedOut, {});
    }
    void record(int channel, TrafficKind kind, const QByteArray &content)
    {
        recorder.add(channel, kind, content);
        window.tmrRefresh_Timer();
    }
    /// The cells of a column, "|" between them.
    [[nodiscard]] QString column(int at) const
    {
        const QAbstractItemModel &model = *window.tblTraffic->model();
        QStringList cells;
        for (int row = 0; row < model.rowCount(); ++row)
            cells.append(model.index(row, at).data().toString());
        return cells.join(u'|');
    }
    void fill(int count)
    {
        for (int event = 0; event < count; ++event)
            recorder.add(0, TrafficKind::Sent, "ev" + QByteArray::number(event));
    }
    /// So much that all that was recorded before is dropped.
    void flood()
    {
        const QByteArray piece(TrafficRecorder::longestEvent, '9');
        for (int count = 0; count < 200; ++count)
            recorder.add(1, TrafficKind::Received, piece);
    }
    [[nodiscard]] bool isDone()
    {
        return soon([this] {
            window.tmrRefresh_Timer();
            return !state().contains(u"still");
        });
    }
    [[nodiscard]] int rows() const { return window.tblTraffic->model()->rowCount(); }
    [[nodiscard]] QString state() const { return window.lblState->text(); }
    [[nodiscard]] int current() const { return window.tblTraffic->currentIndex().row(); }
    /// Saves the rows under the name and gives what the file holds then.
    QByteArray saved(const QString &name)
    {
        const QString path = folder.filePath(name);
        dialogs.answerSave({Outcome::Chosen, path});
        window.cmdSave_Click();
        EXPECT_TRUE(soon([this] { return window.cmdSave->isEnabled(); }));
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    TrafficRecorder recorder{qsizetype{4} << 20};
    TrafficWindow window{recorder, dialogs};
};

} // namespace

TEST_F(TrafficDesk, ShowsWhatPassesAndFiltersIt)
{
    const QString all = u"/dev/tty|>01 *IDN?<CR>|<01:ONE<CR><LF>|? PV<CR>|2<80><NUL>\u00e9|"_s;
    EXPECT_EQ(column(3), all);
    EXPECT_EQ(column(1), u"RS-485|RS-485|RS-485|TCP/IP-1|TCP/IP-1|IEEE 488");
    window.cboShow->setCurrentIndex(1);
    EXPECT_EQ(column(3).section(u'|', 3), u"3F 20 50 56 0D|32 80 00 E9|");
    window.cboShow->setCurrentIndex(0);
    window.cboTime->setCurrentIndex(1);
    EXPECT_TRUE(column(0).startsWith(u"  +0.000000|  +0."));

    window.chkOthers->click();
    window.chkReceived->click();
    EXPECT_EQ(column(3), u">01 *IDN?<CR>|? PV<CR>");
    record(1, TrafficKind::Sent, "new\r");
    record(1, TrafficKind::Received, "hidden");
    window.chkChannel[3]->click();
    EXPECT_EQ(column(3), u">01 *IDN?<CR>|new<CR>");
    window.txtFilter->setText(u"IDN?<cr>"_s);
    EXPECT_EQ(column(3), u">01 *IDN?<CR>");
    window.chkReceived->click();
    window.txtFilter->setText(u"<80>"_s);
    EXPECT_EQ(column(3), QString());
    window.chkChannel[3]->click();
    EXPECT_EQ(column(3), u"2<80><NUL>\u00e9");
    for (QCheckBox *each : {window.chkOthers})
        each->click();
    window.txtFilter->clear();
    EXPECT_EQ(column(3), all + u"|new<CR>|hidden"_s);
}

TEST_F(TrafficDesk, PausesClearsMarksFindsAndCopies)
{
    window.cmdPause->click();
    record(4, TrafficKind::Received, "while paused");
    EXPECT_FALSE(column(3).contains(u"paused"));
    window.cmdPause->click();
    EXPECT_TRUE(column(3).endsWith(u"while paused"));

    // The focus makes the first row the current one, which is not seen: all rows are searched.
    QFocusEvent focus(QEvent::FocusIn);
    QCoreApplication::sendEvent(window.tblTraffic, &focus);
    ASSERT_EQ(current(), 0);
    window.txtFind->setText(u"pv"_s);
    window.cmdFindPrevious->click();
    EXPECT_EQ(current(), 3);
    window.cmdFindNext->click();
    EXPECT_TRUE(window.lblState->text().endsWith(u"\"pv\" is not below"));
    window.txtFind->setText(u"<CR>"_s);
    window.cmdFindPrevious->click();
    EXPECT_EQ(current(), 2);
    window.cmdMark->click();
    EXPECT_TRUE(column(0).section(u'|', 2, 2).startsWith(u'\u25cf'));
    window.tblTraffic->selectRow(6);
    window.cmdNextMark->click();
    EXPECT_EQ(current(), 2) << "from the top again";
    window.cmdCopy->click();
    EXPECT_TRUE(
        QApplication::clipboard()->text().endsWith(u"RS-485\t\u2190 received\t<01:ONE<CR><LF>\n"));

    window.cmdClear->click();
    EXPECT_EQ(column(3), QString());
    record(0, TrafficKind::Sent, "after");
    EXPECT_EQ(column(3), u"after");
}

TEST_F(TrafficDesk, FollowsUntilTheUserScrollsAndLosesWhatTheRecorderDrops)
{
    fill(1000);
    window.tmrRefresh_Timer();
    QScrollBar &bar = *window.tblTraffic->verticalScrollBar();
    EXPECT_EQ(bar.value(), bar.maximum());
    bar.setValue(10);
    record(0, TrafficKind::Sent, "x");
    EXPECT_EQ(bar.value(), 10);
    window.txtFilter->setText(u"9"_s);
    EXPECT_TRUE(soon([this] { return window.tblTraffic->model()->rowCount() == 271; }));
    flood();
    EXPECT_EQ(column(3).section(u'|', 0, 0), u"(dropped)");
    EXPECT_EQ(column(1).section(u'|', 0, 0), QString());
    window.tmrRefresh_Timer();
    EXPECT_TRUE(soon([this] { return !window.lblState->text().contains(u"still"); }));
    EXPECT_EQ(column(1).count(u"RS-485"), 0);
    EXPECT_EQ(quint64(window.tblTraffic->model()->rowCount()), recorder.end() - recorder.first());
    EXPECT_TRUE(window.lblState->text().contains(u"have been dropped"));
}

TEST_F(TrafficDesk, WhatIsPausedStaysThroughFiltersAndGoesWithWhatIsDropped)
{
    fill(50'000);
    window.tmrRefresh_Timer();
    window.txtFilter->setText(u"ev"_s);
    window.cmdPause->click();
    fill(10);
    ASSERT_TRUE(isDone());
    EXPECT_EQ(rows(), 50'001);
    window.txtFilter->clear();
    window.chkReceived->click();
    ASSERT_TRUE(isDone());
    EXPECT_EQ(rows(), 50'004);
    window.chkReceived->click();
    EXPECT_EQ(rows(), 50'006);

    const auto areHeaders = [this] { return window.tblTraffic->verticalHeader()->count(); };
    flood();
    window.tmrRefresh_Timer();
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(areHeaders(), 0);
    window.cmdPause->click();
    EXPECT_EQ(areHeaders(), rows());
    window.close();
    flood();
    window.show();
    EXPECT_EQ(areHeaders(), rows());
    EXPECT_EQ(quint64(rows()), recorder.end() - recorder.first());
}

TEST_F(TrafficDesk, FindsWhatIsThereWhileOlderRowsGo)
{
    TrafficRecorder big{qsizetype{8} << 20};
    TrafficWindow other(big, dialogs);
    other.show();
    for (int event = 0; event < 250'000; ++event)
        big.add(0, TrafficKind::Sent, "ev" + QByteArray::number(event));
    other.tmrRefresh_Timer();
    const auto find = [&other](const QString &text) {
        other.txtFind->setText(text);
        other.tblTraffic->setCurrentIndex({});
        other.cmdFindNext->click();
        other.txtFind->setText(u"ev"_s);
        other.tmrRefresh_Timer();
        EXPECT_TRUE(other.lblState->text().contains(u"still"));
    };
    const auto isDone = [&other] {
        other.tmrRefresh_Timer();
        return !other.lblState->text().contains(u"still");
    };
    find(u"absent"_s);
    EXPECT_TRUE(soon(isDone));
    EXPECT_TRUE(other.lblState->text().contains(u"\"absent\" is not below"));
    find(u"ev208000"_s);
    while (big.first() < 100'000)
        big.add(1, TrafficKind::Received, QByteArray(TrafficRecorder::longestEvent, '9'));
    EXPECT_TRUE(soon(isDone));
    const int row = other.tblTraffic->currentIndex().row();
    EXPECT_EQ(other.tblTraffic->model()->index(row, 3).data(), u"ev208000"_s);
}

/// As it is shown, and no byte is an Omega.
TEST_F(TrafficDesk, FiltersByWhatStandsThere)
{
    record(0, TrafficKind::Received, QByteArray("2.5 k\0", 6));
    record(0, TrafficKind::Connected, u"M\u00dcLLER:1"_s.toUtf8());
    record(0, TrafficKind::Fault, "a\nb");
    const QList<std::pair<QString, QString>> table{{u"2.5 k\u03a9"_s, u""_s},
                                                   {u"2.5 k<nul>"_s, u"2.5 k<NUL>"_s},
                                                   {u"m\u00fcller"_s, u"M\u00dcLLER:1"_s},
                                                   {u"a<LF>b"_s, u"a<LF>b"_s}};
    for (const auto &[text, shown] : table) {
        window.txtFilter->setText(text);
        EXPECT_EQ(column(3), shown);
    }
}

TEST_F(TrafficDesk, CopiesAndMarksWhatIsSelectedFromTheTop)
{
    fill(TrafficWindow::mostCopied + 1 - rows());
    window.tmrRefresh_Timer();
    QItemSelectionModel &selection = *window.tblTraffic->selectionModel();
    for (const int row : {8, 7, 3}) {
        const auto how = QItemSelectionModel::Select | QItemSelectionModel::Rows;
        selection.select(window.tblTraffic->model()->index(row, 0), how);
    }
    window.cmdCopy->click();
    const QStringList lines = QApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].endsWith(u"? PV<CR>") && lines[2].endsWith(u"ev2"));
    window.cmdMark->click();
    window.tblTraffic->selectRow(7);
    window.cmdMark->click();
    EXPECT_EQ(column(0).count(u'\u25cf'), 2);

    const auto copyAll = [this] {
        window.tblTraffic->selectAll();
        window.cmdCopy->click();
    };
    copyAll();
    EXPECT_TRUE(state().contains(u"the first 10,000 of 10,001 rows")) << state().toStdString();
    window.chkChannel[2]->click();
    ASSERT_TRUE(isDone());
    copyAll();
    EXPECT_TRUE(state().contains(u"; 10,000 rows copied"));
}

TEST_F(TrafficDesk, CountsWhatItSavedAndSavesWhatWasBegunWhenItGoes)
{
    fill(1000);
    window.tmrRefresh_Timer();
    flood(); // before the next refresh
    const auto count = saved(u"a.txt"_s).count('\n');
    EXPECT_TRUE(state().contains(u"; %L1 rows saved"_s.arg(count))) << state().toStdString();
    {
        TrafficWindow other(recorder, dialogs);
        other.show();
        dialogs.answerSave({Outcome::Chosen, folder.filePath(u"b.txt"_s)});
        other.cmdSave_Click();
    }
    EXPECT_EQ(QFileInfo(folder.filePath(u"b.txt"_s)).size(),
              QFileInfo(folder.filePath(u"a.txt"_s)).size());
}

TEST_F(TrafficDesk, SavesTheRowsShownAsTextTableOrPacketsAndSaysWhyNot)
{
    window.chkChannel[0]->click();
    const QByteArray day = QDateTime::currentDateTime().toString(u"yyyy-MM-ddTHH:"_s).toLatin1();
    const QByteArrayList text = saved(u"a.txt"_s).split('\n');
    ASSERT_EQ(text.size(), 4);
    EXPECT_TRUE(text[0].endsWith("  TCP/IP-1  sent          ? PV<CR>")) << text[0].toStdString();
    EXPECT_TRUE(text[0].startsWith(day));
    EXPECT_TRUE(text[2].endsWith("  IEEE 488  time-out      "));
    EXPECT_TRUE(window.lblState->text().contains(u"3 rows saved"));

    const QByteArrayList table = saved(u"a.csv"_s).split('\n');
    EXPECT_EQ(table[0], "seconds,clock,channel,kind,text,hexadecimal\r");
    const QString stamp = QString::fromLatin1(table[2].split(',')[1]);
    const QDateTime at = recorder.began().addMSecs(recorder.at(4).time / 1000);
    EXPECT_LE(std::abs(at.msecsTo(QDateTime::fromString(stamp, Qt::ISODateWithMs))), 1);
    EXPECT_TRUE(table[2].endsWith(",TCP/IP-1,received,2<80><NUL>\xc3\xa9,32 80 00 E9\r"));

    const QByteArray old = saved(u"a.txt"_s);
    QDir(folder.path()).mkdir(u"b.txt"_s);
    dialogs.expectMessage(folder.filePath(u"b.txt: it is no regular file"_s));
    saved(u"b.txt"_s);
    EXPECT_TRUE(window.lblState->text().contains(u"not saved"));
    EXPECT_EQ(saved(u"a.txt"_s), old);
}

/// Every byte, direction and time, as the reader of such files reads them.
TEST_F(TrafficDesk, ThePacketsReadBackEqualToTheRecording)
{
    const QString reader = QStandardPaths::findExecutable(u"tshark"_s);
    if (reader.isEmpty())
        GTEST_SKIP() << "tshark is not installed";
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all += static_cast<char>(value);
    record(4, TrafficKind::Received, all);
    saved(u"a.pcapng"_s);
    QProcess tshark;
    tshark.start(reader, {u"-r"_s, folder.filePath(u"a.pcapng"_s), u"-T"_s, u"fields"_s, u"-e"_s,
                          u"frame.time_epoch"_s, u"-e"_s, u"frame.interface_name"_s, u"-e"_s,
                          u"frame.packet_flags_direction"_s, u"-e"_s, u"data.data"_s});
    ASSERT_TRUE(tshark.waitForFinished(60'000));
    QStringList expected;
    for (quint64 number = recorder.first(); number < recorder.end(); ++number) {
        const TrafficEvent event = recorder.at(number);
        const qint64 time = recorder.began().toMSecsSinceEpoch() * 1000 + event.time;
        const int direction = event.kind == TrafficKind::Received ? 1 : 2;
        expected << QStringList{trafficText::secondsOf(time) + u"000"_s,
                                channelCaption(event.channel),
                                event.isBytes() ? u"0x%1"_s.arg(direction, 8, 16, QLatin1Char('0'))
                                                : QString(),
                                event.isBytes()
                                    ? QString::fromLatin1(event.content.toByteArray().toHex())
                                    : QString()}
                        .join(u'\t');
    }
    EXPECT_EQ(QString::fromUtf8(tshark.readAllStandardOutput()).trimmed(), expected.join(u'\n'))
        << tshark.readAllStandardError().toStdString();
}
