// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListFile.h"

#include "core/lists/LineReader.h"
#include "core/lists/ListKinds.h"
#include "core/lists/ListLine.h"
#include "core/lists/ListTexts.h"
#include "core/text/Latin1.h"
#include "devices/RegularFile.h"
#include "devices/WholeFile.h"

#include <QFile>
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

    /// Takes the line of this number in the file. Returns why it ends the reading; empty when it
    /// does not.
    QString add(QByteArrayView line, int number)
    {
        if (line.isEmpty())
            return {};
        if (const QByteArrayView marker = commentMarker(line); !marker.isEmpty()) {
            addComment(line, marker);
            return {};
        }
        const ListLine parsed = ListLine::parse(m_contents.kind, line);
        if (parsed.loss == ListLine::Loss::All)
            m_contents.ignored.add(number);
        else if (parsed.loss == ListLine::Loss::Part)
            m_contents.shortened.add(number);
        if (parsed.kind == ListLine::Kind::Bad)
            return listTexts::tooFewWords;
        if (parsed.kind == ListLine::Kind::Row)
            addRow(parsed.cells);
        if (parsed.kind != ListLine::Kind::Constant)
            return {};
        if (m_contents.constants.size() == ListConstant::capacity)
            return listTexts::tooManyConstants.arg(ListConstant::capacity);
        m_contents.constants.push_back(parsed.constant);
        return {};
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
        m_contents.comments += u"\r\n"_s;
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

/// Some editors put it in front of a text. It belongs to no line.
constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");

QString firstThatDoesNotFit(const QString &text)
{
    const QString misfit = latin1::misfit(text);
    if (misfit.isEmpty())
        return {};
    const uint code =
        misfit.size() > 1 ? QChar::surrogateToUcs4(misfit[0], misfit[1]) : misfit[0].unicode();
    const QStringView before = QStringView(text).first(latin1::misfitAt(text));
    return listTexts::noCharacterOfLists.arg(before.count(u'\n') + 1)
        .arg(misfit)
        .arg(code, 4, 16, QLatin1Char('0'));
}

} // namespace

TextTable listFile::emptyTable(int kind, int rows, int columns)
{
    const QStringList &titles = listKinds::layout(kind).titles;
    TextTable table(rows, std::max(columns, static_cast<int>(titles.size())));
    for (int column = 0; column < table.columnCount(); ++column)
        table.setText(0, column, titles.value(column));
    return table;
}

ListContents listFile::read(const QString &path)
{
    ListContents contents;
    contents.kind = listKinds::ofPath(path);
    QFile file(path);
    contents.reason = regularFile::open(file, QIODevice::ReadOnly | QIODevice::Unbuffered);
    if (!contents.reason.isEmpty()) {
        contents.end = ListContents::End::NotOpened;
        contents.table = emptyTable(contents.kind, rowStep);
        return contents;
    }
    LineReader lines(file, maximumLine);
    ListBuilder builder(contents);
    qsizetype taken = 0;
    while (contents.reason.isEmpty() && lines.next()) {
        QByteArrayView line = lines.line();
        taken += line.size() + 1;
        if (lines.number() == 1 && line.startsWith(byteOrderMark))
            line = line.sliced(byteOrderMark.size());
        contents.reason = builder.add(line, lines.number());
        if (contents.table.rowCount() == sampleRows)
            contents.table.reserve(expectedRows(file.size(), taken));
    }
    if (!contents.reason.isEmpty()) {
        contents.end = ListContents::End::BadLine;
    } else if (!lines.fault().isEmpty()) {
        contents.end = ListContents::End::Failed;
        contents.reason = lines.fault();
    }
    if (contents.end != ListContents::End::Complete) {
        contents.endLine = lines.number();
        builder.stop();
    }
    return contents;
}

QString listFile::settingsText(const TextTable &table, const QString &comments)
{
    const auto lineEnd = u"\r\n"_s;
    QString text;
    for (const QString &comment : comments.split(lineEnd, Qt::SkipEmptyParts))
        text += u"\\\\"_s + comment + lineEnd;
    for (int row = 1; !table.text(row, 1).isEmpty(); ++row)
        text += table.text(row, 1) % u' ' % table.text(row, 2) % lineEnd;
    return text;
}

QString listFile::write(const QString &path, const QString &text)
{
    const QString fault = firstThatDoesNotFit(text);
    return fault.isEmpty() ? wholeFile::write(path, text.toLatin1()) : fault;
}

} // namespace corvane
