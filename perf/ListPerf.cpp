// SPDX-License-Identifier: GPL-3.0-or-later
// What a long test list costs: loading against only splitting the file into lines and words,
// growth from 100,000 to 200,000 rows, memory a row, and a reply of megabytes in small pieces.
#include "core/lists/ListFile.h"
#include "perf/Application.h"
#include "perf/Harness.h"
#include "windows/widgets/TextGrid.h"

#include <QFile>
#include <QTemporaryDir>

#include <malloc.h>

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr int shortList = 100'000;

/// A test list of `rows` rows in a file of its own: queries and checks, and a comment now and then.
class TestListFile
{
public:
    explicit TestListFile(int rows)
        : m_path(m_folder.filePath(u"long.tst"_s))
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

void load(GridModel &cells, const QString &path)
{
    cells.setTable(listFile::read(path).table);
}

/// Processor seconds, so that what else the machine does stays out of the ratios.
double cost(const std::function<void()> &work)
{
    const double before = processorSeconds();
    work();
    return processorSeconds() - before;
}

std::size_t heapInUse()
{
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

void measureLoading(Table &table)
{
    constexpr int rounds = 9;
    const TestListFile file(shortList);
    const TestListFile twice(2 * shortList);
    GridModel cells;
    TextGrid grid(cells);
    grid.show();
    const auto loadOnce = [&] { return cost([&] { load(cells, file.path()); }); };
    const auto loadTwice = [&] { return cost([&] { load(cells, twice.path()); }); };
    qsizetype lines = 0;
    const Comparison loading =
        compare(rounds, loadOnce, [&] { return cost([&] { lines = splitOnly(file.path()); }); });
    if (lines <= shortList)
        throw std::runtime_error("the file has too few lines");
    table.note("100,000 rows, loaded", loading.a, "s");
    table.note("their lines and words, only split", loading.b, "s");
    table.atMost("loading over splitting", loading.ratio, 3, "times");
    table.atMost("200,000 rows over 100,000", compare(rounds, loadTwice, loadOnce).ratio, 2.2,
                 "times");
}

/// A list as it is after a run: replies and verdicts in their cells.
void measureMemory(Table &table)
{
    const TestListFile file(shortList);
    const std::size_t before = heapInUse();
    GridModel cells;
    TextGrid grid(cells);
    load(cells, file.path());
    grid.show();
    grid.grab();
    for (int row = 2; row < cells.table().rowCount(); row += 2) {
        cells.setText(row - 1, 5, u"25.3"_s);
        cells.setText(row, 5, u"PASSED"_s);
        cells.setVerdict(row, 5, GridModel::Verdict::Passed);
    }
    const auto bytes = static_cast<double>(heapInUse() - before);
    table.atMost("memory a row, run", bytes / shortList, 400, "bytes");
}

void replyInPieces(GridModel &cells, int pieces)
{
    const QByteArray piece(64, 'x');
    cells.setText(1, 5, QString());
    for (int i = 0; i < pieces; ++i)
        cells.replaceTail(1, 5, i * piece.size(), QLatin1StringView(piece.data(), piece.size()));
}

void measureLongReply(Table &table)
{
    constexpr int pieces = 65'536; // 4 MB
    GridModel cells;
    cells.setTable(TextTable(2, 6));
    TextGrid grid(cells);
    grid.show();
    const Comparison growth = compare(
        5, [&] { return cost([&] { replyInPieces(cells, 2 * pieces); }); },
        [&] { return cost([&] { replyInPieces(cells, pieces); }); });
    table.note("a reply of 4 MB in 64-byte pieces", growth.b, "s");
    table.atMost("8 MB over 4 MB", growth.ratio, 2.2, "times");
}

int measure()
{
    Table table("Long lists");
    measureLoading(table);
    measureMemory(table);
    measureLongReply(table);
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
