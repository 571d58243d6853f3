// What a long test list costs: loading against only splitting the file into lines and words,
// growth from 100,000 to 200,000 rows, memory a row, and a reply of megabytes in small pieces.
#include "lists/ListFile.h"
#include "platform/TextGrid.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <ctime>
#include <functional>
#include <malloc.h>

using namespace corvane;

namespace {

constexpr int shortList = 100'000;

/// A test list of `rows` rows in a file of its own: queries and checks, and a comment now and then.
class TestListFile
{
public:
    explicit TestListFile(int rows)
        : m_path(m_folder.filePath(QStringLiteral("long.tst")))
    {
        QByteArray text;
        for (int row = 0; row < rows; row += 2) {
            if (row % 100 == 0)
                text += "// block " + QByteArray::number(row) + "\r\n";
            text += "? SP" + QByteArray::number(row % 50) + " x\r\n";
            text += "! SP" + QByteArray::number(row % 50) + " 25.5 0.5\r\n";
        }
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test list");
    }

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    QTemporaryDir m_folder;
    QString m_path;
};

/// The file's lines, each as its words.
qsizetype splitOnly(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    QList<QByteArrayList> lines;
    for (const QByteArray &line : file.readAll().split('\n'))
        lines.append(line.split(' '));
    return lines.size();
}

void load(TextGrid &grid, const QString &path)
{
    grid.setTable(listFile::read(path).table);
}

/// Processor time, so that what else the machine does stays out of the ratios.
double secondsOf(const std::function<void()> &work)
{
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

std::size_t heapInUse()
{
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

void splitLinesAndWords(benchmark::State &state)
{
    const TestListFile file(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(splitOnly(file.path()));
}

void loadIntoGrid(benchmark::State &state)
{
    const TestListFile file(static_cast<int>(state.range(0)));
    TextGrid grid;
    grid.show();
    for (auto _ : state)
        load(grid, file.path());
}

/// Both sides in turn, so that neither finds a warmer cache.
void loadRatios(benchmark::State &state)
{
    const TestListFile file(shortList);
    const TestListFile twice(2 * shortList);
    TextGrid grid;
    double split = 0;
    double loadOnce = 0;
    double loadTwice = 0;
    for (auto _ : state) {
        split += secondsOf([&file] { benchmark::DoNotOptimize(splitOnly(file.path())); });
        loadOnce += secondsOf([&] { load(grid, file.path()); });
        loadTwice += secondsOf([&] { load(grid, twice.path()); });
    }
    state.counters["load/split"] = loadOnce / split;
    state.counters["200k/100k"] = loadTwice / loadOnce;
}

void memoryOfARow(benchmark::State &state)
{
    const TestListFile file(shortList);
    double bytes = 0;
    for (auto _ : state) {
        const std::size_t before = heapInUse();
        TextGrid grid;
        load(grid, file.path());
        grid.show();
        grid.grab();
        for (int row = 2; row < grid.rowCount(); row += 2) {
            grid.setText(row - 1, 5, QStringLiteral("25.3"));
            grid.setText(row, 5, QStringLiteral("PASSED"));
            grid.setVerdict(row, 5, TextGrid::Verdict::Passed);
        }
        bytes = static_cast<double>(heapInUse() - before);
    }
    state.counters["bytes/row"] = bytes / shortList;
}

void replyInPieces(benchmark::State &state)
{
    const QByteArray piece(64, 'x');
    const auto pieces = state.range(0) / piece.size();
    TextGrid grid;
    grid.setColCount(6);
    grid.setRowCount(2);
    grid.show();
    for (auto _ : state) {
        grid.setText(1, 5, QString());
        for (qsizetype at = 0; at < pieces; ++at)
            grid.replaceTail(1, 5, at * piece.size(),
                             QLatin1StringView(piece.data(), piece.size()));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(splitLinesAndWords)->Arg(shortList)->Unit(benchmark::kMillisecond);
BENCHMARK(loadIntoGrid)->Arg(shortList)->Arg(2 * shortList)->Unit(benchmark::kMillisecond);
BENCHMARK(loadRatios)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(memoryOfARow)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(replyInPieces)->Arg(1 << 20)->Arg(10 << 20)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
