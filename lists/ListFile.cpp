#include "lists/ListFile.h"

#include "lists/LineReader.h"
#include "lists/ListKinds.h"
#include "lists/ListLine.h"
#include "platform/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringBuilder>

#include <algorithm>
#include <array>
#include <charconv>

namespace corvane {

namespace {

/// Fills the contents line by line.
class ListBuilder
{
public:
    explicit ListBuilder(ListContents &contents)
        : m_contents(contents)
    {
        m_contents.table = listFile::emptyTable(contents.kind, 1);
    }

    /// False at a line that ends the reading.
    bool add(QByteArrayView line)
    {
        if (line.isEmpty())
            return true;
        if (const QByteArrayView marker = commentMarker(line); !marker.isEmpty()) {
            addComment(line, marker);
            return true;
        }
        const ListLine parsed = ListLine::parse(m_contents.kind, line);
        switch (parsed.kind) {
        case ListLine::Kind::Row:
            addRow(parsed.cells);
            return true;
        case ListLine::Kind::Constant:
            if (m_contents.constants.size() == ListConstant::capacity)
                return false;
            m_contents.constants.push_back(parsed.constant);
            return true;
        case ListLine::Kind::Ignored:
            return true;
        case ListLine::Kind::Bad:
            return false;
        }
        return false;
    }

    /// Leaves the grid as a reading that stopped leaves it: the next row with its number, and the
    /// rows that were held ready.
    void stop()
    {
        addRow({});
        const int next = m_contents.table.rowCount() - 1;
        constexpr int step = listFile::rowStep;
        m_contents.table.setRowCount((next / step + 1) * step);
    }

private:
    void addComment(QByteArrayView line, QByteArrayView marker)
    {
        m_contents.comments +=
            QString::fromLatin1(line.toByteArray().replace(marker, QByteArrayView()));
        m_contents.comments += QStringLiteral("\r\n");
    }

    void addRow(std::array<QLatin1StringView, ListLine::columns> cells)
    {
        std::array<char, 16> number{};
        const auto end = std::to_chars(number.begin(), number.end(), m_contents.table.rowCount());
        cells[listKinds::lineColumn] = QLatin1StringView(number.data(), end.ptr - number.data());
        m_contents.table.appendRow(cells);
    }

    ListContents &m_contents;
};

/// Rows from which the length of the whole list is foretold, so that its table need not grow.
constexpr int sampleRows = 1000;

int expectedRows(qint64 fileSize, qsizetype sampleSize)
{
    constexpr qint64 most = 10'000'000; // a file's size is no reason to take all memory
    return static_cast<int>(std::min(fileSize * sampleRows / sampleSize * 21 / 20, most));
}

bool fitsLatin1(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() <= 0xff; });
}

} // namespace

TextTable listFile::emptyTable(int kind, int rows)
{
    const QStringList &titles = listKinds::layout(kind).titles;
    TextTable table(rows, static_cast<int>(titles.size()));
    for (int column = 0; column < table.columnCount(); ++column)
        table.setText(0, column, titles[column]);
    return table;
}

ListContents listFile::read(const QString &path)
{
    ListContents contents;
    contents.kind = listKinds::ofPath(path);
    QFile file(path);
    // A folder, a pipe or a device is no list, and opening a pipe would wait for its writer.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        contents.end = ListContents::End::NotOpened;
        contents.table = emptyTable(contents.kind, rowStep);
        return contents;
    }
    LineReader lines(file, maximumLine);
    ListBuilder builder(contents);
    bool good = true;
    qsizetype taken = 0;
    while (good && lines.next()) {
        good = builder.add(lines.line());
        taken += lines.line().size() + 1;
        if (contents.table.rowCount() == sampleRows)
            contents.table.reserve(expectedRows(file.size(), taken));
    }
    if (!good)
        contents.end = ListContents::End::BadLine;
    else if (lines.failed())
        contents.end = ListContents::End::Failed;
    if (contents.end != ListContents::End::Complete)
        builder.stop();
    return contents;
}

QString listFile::settingsText(const TextTable &table, const QString &comments)
{
    const auto lineEnd = QStringLiteral("\r\n");
    QString text;
    for (const QString &comment : comments.split(lineEnd, Qt::SkipEmptyParts))
        text += QStringLiteral("\\\\") + comment + lineEnd;
    for (int row = 1; !table.text(row, 1).isEmpty(); ++row)
        text += table.text(row, 1) % u' ' % table.text(row, 2) % lineEnd;
    return text;
}

bool listFile::write(const QString &path, const QString &text)
{
    if (!fitsLatin1(text))
        return false;
    return wholeFile::write(path, text.toLatin1()).isEmpty();
}

} // namespace corvane
