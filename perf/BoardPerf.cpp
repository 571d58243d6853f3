// How much longer than the waits they ask for the board window's long procedures take, and what
// they cost the processor meanwhile. Board and meter answer at once, so the rest is the program's.
#include "board/BoardChannels.h"
#include "board/CalibrationPanel.h"
#include "board/DigitalIoPanel.h"
#include "board/DigitalTestsPanel.h"
#include "board/frmSBC.h"
#include "platform/Dialogs.h"
#include "platform/GpibControl.h"
#include "platform/SystemClock.h"

#include <QApplication>
#include <QElapsedTimer>

#include <benchmark/benchmark.h>
#include <ctime>

using namespace corvane;

namespace {

/// The system's clock, adding up the waits that it was asked for.
class CountingClock : public SystemClock
{
public:
    qint64 askedMs = 0;

protected:
    WaitEnd runWait(const Condition &done, int ms, const Condition &cancelled) override
    {
        askedMs += ms;
        return SystemClock::runWait(done, ms, cancelled);
    }
};

/// A board with perfect converters and a loop-back connector, and the meter beside it.
class InstantDevices : public GpibAdapter
{
public:
    [[nodiscard]] QString description() const override { return QStringLiteral("instant devices"); }
    QString version(WaitGroup &) override { return QStringLiteral("1"); }
    void open(const GpibAddress &, WaitGroup &) override {}
    void clear(const GpibAddress &, WaitGroup &) override {}
    void write(const GpibAddress &, const QByteArray &bytes, int, WaitGroup &) override
    {
        const auto comma = bytes.indexOf(',');
        if (bytes.startsWith("DAC") && comma > 0)
            m_volts = bytes.mid(comma + 1).split(',').first().trimmed();
        else if (bytes.startsWith("PORT") && comma > 0)
            m_register = bytes.mid(comma + 1).trimmed();
        m_reply = bytes.startsWith("PORT")   ? m_register
                  : bytes.startsWith("data") ? m_volts
                                             : m_volts + ",1,0";
    }
    QByteArray read(const GpibAddress &, int, WaitGroup &) override { return m_reply; }

private:
    QByteArray m_volts = "0";
    QByteArray m_register = "0";
    QByteArray m_reply;
};

class Agreement : public Dialogs
{
public:
    using Dialogs::showMessage;
    Answer showMessage(QWidget *, const MessageBox &) override { return Answer::Ok; }
    FileChoice openFile(QWidget *, const FileQuestion &) override { return {}; }
    FileChoice saveFile(QWidget *, const FileQuestion &) override { return {}; }
    void dismissAll() override {}
    [[nodiscard]] int openCount() const override { return 0; }
};

class GpibOnly : public BoardChannels
{
public:
    explicit GpibOnly(Clock &clock)
        : m_control(clock, [](int) { return std::make_unique<InstantDevices>(); })
    {
        m_control.setConnectString(QStringLiteral("GPIB0::5"));
    }
    SerialPort &MSComm1() override { qFatal("not used"); }
    GpibControl &QBXControl1() override { return m_control; }
    TcpClient &tcpClient1() override { qFatal("not used"); }
    [[nodiscard]] QString responseText(int) const override { return {}; }
    void clearResponse(int) override {}
    [[nodiscard]] ChannelUse channelUse(int) const override { return ChannelUse::Free; }
    void uncheckMnuSBC() override {}

private:
    GpibControl m_control;
};

void measure(benchmark::State &state, void (*procedure)(frmSBC &))
{
    CountingClock clock;
    Agreement dialogs;
    GpibOnly channels(clock);
    frmSBC board(channels, dialogs, clock);
    board.show();
    for (auto _ : state) {
        clock.askedMs = 0;
        QElapsedTimer wall;
        wall.start();
        const std::clock_t before = std::clock();
        procedure(board);
        const double tookMs = static_cast<double>(wall.nsecsElapsed()) / 1e6;
        const double cpuMs = 1e3 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
        state.counters["asked_ms"] = static_cast<double>(clock.askedMs);
        state.counters["over_percent"] = 100 * (tookMs / static_cast<double>(clock.askedMs) - 1);
        state.counters["core_percent"] = 100 * cpuMs / tookMs;
    }
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const std::pair<const char *, void (*)(frmSBC &)> procedures[] = {
        {"Calibration", [](frmSBC &board) { board.calibration->cmdCal_Click(); }},
        {"ScanAll", [](frmSBC &board) { board.calibration->cmdScan_Click(); }},
        {"FullTest", [](frmSBC &board) { board.digitalIo->tests->cmdDigTestFull_Click(); }},
    };
    for (const auto &[name, procedure] : procedures)
        benchmark::RegisterBenchmark(name, measure, procedure)
            ->Iterations(1)
            ->Unit(benchmark::kSecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
