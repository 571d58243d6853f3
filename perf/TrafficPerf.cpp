// SPDX-License-Identifier: GPL-3.0-or-later
// What the traffic window costs with a million rows: how long it takes to open, to filter and to
// find, and how long it does not answer meanwhile.
#include "app/UnattendedDialogs.h"
#include "core/traffic/TrafficRecorder.h"
#include "perf/Application.h"
#include "perf/Harness.h"
#include "windows/traffic/TrafficWindow.h"

#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTextStream>

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr int events = 1'000'000;

/// Commands and replies in turn, the last one like no other.
void record(TrafficRecorder &recorder)
{
    for (int event = 0; event < events - 1; ++event) {
        const bool isCommand = event % 2 == 0;
        recorder.add(event / 2 % 5, isCommand ? TrafficKind::Sent : TrafficKind::Received,
                     isCommand ? QByteArray("? PV x\r") : QByteArray::number(event) + "\r\n");
    }
    recorder.add(0, TrafficKind::Received, "the last one\r\n");
}

struct Took
{
    double ms = 0;
    double longestStallMs = 0;
};

/// Starts the work and processes events until it is done.
Took take(const std::function<void()> &start, const std::function<bool()> &isDone)
{
    Took took;
    const double begin = now();
    double last = begin;
    const auto answer = [&] {
        took.longestStallMs = std::max(took.longestStallMs, (now() - last) * 1e3);
        last = now();
    };
    start();
    while (!isDone()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        answer();
    }
    answer();
    took.ms = (now() - begin) * 1e3;
    return took;
}

/// The middle one of several.
void judge(Table &table, const std::string &what, double bound, const std::function<Took()> &work)
{
    std::vector<double> times;
    std::vector<double> stalls;
    for (int round = 0; round < 5; ++round) {
        const Took took = work();
        times.push_back(took.ms);
        stalls.push_back(took.longestStallMs);
    }
    table.atMost(what, median(times), bound, "ms");
    table.atMost("  without an answer", median(stalls), 50, "ms");
}

int measure()
{
    QTextStream messages(stderr);
    UnattendedDialogs dialogs(messages);
    TrafficRecorder recorder;
    const double perEvent = secondsOf([&] { record(recorder); }) / events;
    Table table("A million rows of traffic");
    table.note("to record one", perEvent * 1e9, "ns");
    table.note("kept of them", double(recorder.end() - recorder.first()), "");

    std::unique_ptr<TrafficWindow> window;
    const Took opened = take(
        [&] {
            window = std::make_unique<TrafficWindow>(recorder, dialogs);
            window->show();
        },
        [&] { return window->isVisible(); });
    table.atMost("to open", opened.ms, 100, "ms");
    QCoreApplication::processEvents();
    const QAbstractItemModel &model = *window->tblTraffic->model();
    const auto isStill = [&] { return window->lblState->text().contains(u"still"_s); };
    judge(table, "to filter by text", 200, [&] {
        const Took took = take([&] { window->txtFilter->setText(u"last"_s); },
                               [&] {
                                   window->tmrRefresh_Timer();
                                   return model.rowCount() == 1;
                               });
        take([&] { window->txtFilter->clear(); }, [&] { return model.rowCount() > events / 2; });
        return took;
    });
    judge(table, "to filter half of them", 200, [&] {
        const Took took = take([&] { window->txtFilter->setText(u"pv"_s); },
                               [&] {
                                   window->tmrRefresh_Timer();
                                   return !isStill();
                               });
        take([&] { window->txtFilter->clear(); }, [&] { return !isStill(); });
        return took;
    });
    judge(table, "to find the last one", 200, [&] {
        window->tblTraffic->setCurrentIndex(model.index(0, 0));
        window->txtFind->setText(u"the last"_s);
        return take(
            [&] { window->cmdFindNext_Click(); },
            [&] { return window->tblTraffic->currentIndex().row() == model.rowCount() - 1; });
    });
    judge(table, "to scroll through a hundred pages", 2000, [&] {
        int page = 0;
        return take([] {},
                    [&] {
                        window->tblTraffic->scrollTo(model.index(page * model.rowCount() / 100, 0));
                        window->tblTraffic->viewport()->repaint();
                        return ++page == 100;
                    });
    });
    const auto done = [] { return true; };
    window->tblTraffic->selectAll();
    judge(table, "to mark all of them", 200,
          [&] { return take([&] { window->cmdMark_Click(); }, done); });
    judge(table, "to copy as many as it does", 200,
          [&] { return take([&] { window->cmdCopy_Click(); }, done); });

    for (int event = 0; event < 2 * TrafficRecorder::mostKept / TrafficRecorder::longestEvent;
         ++event)
        recorder.add(0, TrafficKind::Received, QByteArray(TrafficRecorder::longestEvent, 'x'));
    window->tmrRefresh_Timer();
    judge(table, "to filter events of 32 KB", 200, [&] {
        const Took took =
            take([&] { window->txtFilter->setText(u"last"_s); }, [&] { return !isStill(); });
        take([&] { window->txtFilter->clear(); }, [&] { return !isStill(); });
        return took;
    });
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
