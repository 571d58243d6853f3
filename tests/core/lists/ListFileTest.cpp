// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListFile.h"

#include "ListFixture.h"
#include "core/lists/ListNotes.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace corvane;

namespace {

using End = ListContents::End;

class ListFile : public ListFolder
{
protected:
    ListContents read(const char *name, const QByteArray &text)
    {
        return listFile::read(file(name, text));
    }
};

/// A row without its number and its empty reply.
std::string row(const ListContents &list, int at)
{
    return rowOf(list.table, at).chopped(1).toStdString();
}

/// A line and its cells; null: it takes no row.
struct Line
{
    const char *line;
    const char *cells;
};

void expectRow(const ListContents &list, const Line &line)
{
    EXPECT_EQ(list.end, End::Complete) << line.line;
    ASSERT_EQ(list.table.rowCount(), line.cells ? 2 : 1) << line.line;
    EXPECT_EQ(line.cells ? row(list, 1) : "", line.cells ? line.cells : "") << line.line;
}

} // namespace

TEST_F(ListFile, ChamberSettingsAreCutByTheNumberOfTheirWords)
{
    // clang-format off
    const Line lines[] = {
        {"SP", "SP|"}, {"= SP 50", "= SP|50"}, {"SP 50", "SP 50|"}, {"SP ", "SP |"},
        {"A B C D", "|"}, {"A  B C", "|"}, {"A  B", "A |B"}, {" ", " |"},
        {"UUT1 serial 4711 x", "UUT1|serial 4711 x"}, {"uut a uut b", "uut|a  b"},
        {"uUtX", "uUtX|"}, {"UUT UUT", "UUT|"}, {"\t", "\t|"}, {"! SP 5", "! SP|5"},
        {"/ no comment", "/ no|comment"}, {"", nullptr}, {"//", nullptr}, {"\\\\ x", nullptr}};
    // clang-format on
    for (const Line &line : lines) {
        expectRow(read("list.kms", line.line), line);
        expectRow(read("list.txt", line.line), line);
    }
}

TEST_F(ListFile, AProfileLineBeginsWithTheEqualsSignAndAnyOtherLeavesItsRowEmpty)
{
    // clang-format off
    const Line lines[] = {
        {"= SP 50", "=|SP|50"}, {"= SP 50 60  70 ", "=|SP|50 60  70"}, {"= SP", "=|SP|"},
        {"= ", "=||"}, {"=SP 50", "=SP|50|"}, {"? SP 50", "||"}, {" = SP 50", "||"},
        {"word", "||"}};
    // clang-format on
    for (const Line &line : lines)
        expectRow(read("list.KMP", line.line), line);
}

TEST_F(ListFile, ATestLineIsAStepAConstantOrNothing)
{
    // clang-format off
    const Line lines[] = {
        {"= SP 25", "=|SP|25|"}, {"= SP 25 0.5 x ", "=|SP|25 0.5 x|"}, {"= SP", "=|SP||"},
        {"? SP x", "?|SP|x|"}, {"? SP ", "?|SP||"}, {"! SP 25 0.5", "!|SP|25|0.5"},
        {"! SP 5 0.1 extra", "!|SP|5|"}, {"! SP 5 ", "!|SP|5|"},
        {"! ID \"READY  OR NOT\" 1", "!|ID|\"READY  OR NOT\" 1|"},
        {"! ID \"READY", "!|ID|\"READY|"}, {"! ID a\" b c", "!|ID|a\" b c|"},
        {"! ID a \"b c\"", "!|ID|a|"}, {"# PAUSE", "#|||"}, {"wait a # PAUSE b", "wait|||"},
        {" # PAUSE", "|||"}, {"=SP 25", "=SP|||"}, {"# CONST A = 1 # PAUSE", "#|||"},
        {"# CONST A = 1", nullptr}, {"# CONST A 1", nullptr}, {"any other line", nullptr},
        {" ! SP 25", nullptr}, {"#PAUSE", nullptr}};
    // clang-format on
    for (const Line &line : lines)
        expectRow(read("LIST.TST", line.line), line);
}

TEST_F(ListFile, ALineWithoutAWordThatIsTakenEndsTheReadingAndKeepsTheRowsBefore)
{
    for (const char *bad : {"? SP", "! SP", "?", "!", "="}) {
        const ListContents list =
            read("a.tst", QByteArray("= SP 1\nnothing\n") + bad + "\n= SP 2\n");
        EXPECT_EQ(list.end, End::BadLine) << bad;
        EXPECT_EQ(listNotes::ofLoad(u"a"_s, list),
                  u"a: line 3: too few words; 1 line ignored: line 2");
        EXPECT_EQ(row(list, 1) + row(list, 2), "=|SP|1||||");
        EXPECT_EQ(list.table.text(2, 0), u"2");
        EXPECT_EQ(list.table.rowCount(), 100);
    }
    EXPECT_EQ(read("a.kmp", "=").end, End::BadLine);
    // The row that is used up last brings the next hundred.
    EXPECT_EQ(read("a.tst", QByteArray("# PAUSE\n").repeated(98) + "?").table.rowCount(), 100);
    EXPECT_EQ(read("a.tst", QByteArray("# PAUSE\n").repeated(99) + "?").table.rowCount(), 200);
}

TEST_F(ListFile, ConstantsAreKeptWithTheirLeadingNumberAndThereIsRoomForTwentyOne)
{
    const ListContents list = read(
        "a.tst", "# CONST NAME = 1.5\n# CONST BAD = abc\n# CONST UNIT = -2e1V\n# CONST BIG = 1e39\n"
                 "# CONST SPACED  = 1\n# CONST A = 1 2\nx # CONST A = 1\n# CONST A : 1\n"
                 "# CONST  = 7\n= SP 1\n");
    const float big = std::numeric_limits<float>::max();
    EXPECT_EQ(list.constants,
              (std::vector<ListConstant>{
                  {u"NAME"_s, 1.5F}, {u"BAD"_s, 0}, {u"UNIT"_s, -20}, {u"BIG"_s, big}, {{}, 7}}));
    EXPECT_EQ(list.table.text(1, 0), u"1"); // constants leave no gap

    const QByteArray constant("# CONST A = 1\n");
    EXPECT_EQ(read("a.tst", constant.repeated(21)).end, End::Complete);
    EXPECT_EQ(read("a.tst", constant.repeated(22)).end, End::BadLine);
    EXPECT_EQ(read("a.tst", constant.repeated(21) + "# CONST A 1").end, End::Complete);
}

TEST_F(ListFile, EveryMarkerIsTakenOutOfACommentAndItsBlanksStay)
{
    const ListContents list = read("a.tst", "// a // b\r\n= SP 1\n\\\\x\\\\y // z\r////\n//\\\\\n");
    EXPECT_EQ(list.comments, u" a  b\r\nxy // z\r\n\r\n\\\\\r\n");
    EXPECT_EQ(list.table.rowCount(), 2);
}

TEST_F(ListFile, AnyLineEndEndsALineAndTheLastMayLackIt)
{
    for (const char *text : {"A\nB\n\nC", "A\rB\rC\r", "A\r\nB\r\nC\r\n", "A\r\n\nB\n\rC"}) {
        const ListContents list = read("a.kms", text);
        EXPECT_EQ(list.table.rowCount(), 4) << text;
        EXPECT_EQ(row(list, 3), "C|") << text;
    }
    // A line end that falls between two pieces of the file is still one.
    for (const int size : {65535, 65536}) {
        const QByteArray line(size, 'x');
        EXPECT_EQ(row(read("a.kms", (line + "\r\n").repeated(9) + "end"), 10), "end|");
    }
}

TEST_F(ListFile, WhatIsNoReadableFileIsNotOpened)
{
    QStringList paths{path("missing.tst"), m_folder.path(), QString()};
#ifdef Q_OS_UNIX
    paths.append(path("pipe.tst"));
    ASSERT_EQ(mkfifo(QFile::encodeName(paths.back()).constData(), 0600), 0);
    paths.append(u"/dev/zero"_s);
#endif
    for (const QString &each : paths) {
        EXPECT_EQ(listFile::read(each).end, End::NotOpened) << each.toStdString();
        EXPECT_FALSE(listFile::read(each).reason.isEmpty());
    }
}

TEST_F(ListFile, LinesThatAreNotInTheListAreCountedAndAByteOrderMarkIsNoText)
{
    struct
    {
        const char *name;
        const char *text;
        const char *note;
    } const rows[] = {
        {"a.tst", "// c\n\n= SP 1 2\n! SP 5 0.1\n# CONST A = 1\n# PAUSE\nwait # PAUSE\n ", ""},
        {"a.tst", "\xef\xbb\xbf= SP 1\n", ""},
        {"a.tst", "= SP 1\n\xef\xbb\xbf= SP 2\n", "1 line ignored: line 2"},
        {"a.tst", "\n = SP 1\nx\n# CONST A 1\n # PAUSE", "4 lines ignored, the first is line 2"},
        {"a.tst", "=SP 25\n! SP 5 0.1 x\n! SP 5 0.1 \n",
         "3 lines of which words are left out, the first is line 1"},
        {"a.kms", "\xef\xbb\xbfSP\nA B C D\nUUT a b c\n    \n", "1 line ignored: line 2"},
        {"a.kmp", "= SP 1 2 3\r\n? SP 1\r\nSP\r\n", "2 lines ignored, the first is line 2"}};
    for (const auto &each : rows) {
        const ListContents list = read(each.name, each.text);
        EXPECT_EQ(list.end, End::Complete);
        const QString note = listNotes::ofLoad(QString::fromLatin1(each.name), list);
        EXPECT_EQ(note.section(u": "_s, 1).toStdString(), each.note) << each.text;
    }
    EXPECT_EQ(row(read("a.kms", "\xef\xbb\xbfSP"), 1), "SP|");
}

TEST_F(ListFile, HostileFilesAreReadToTheirEndOrKeepTheRowsBefore)
{
    QByteArray garbage(10 << 20, '\0');
    QRandomGenerator random(4711);
    random.fillRange(reinterpret_cast<quint32 *>(garbage.data()), garbage.size() / 4);
    for (const char *name : {"garbage.kms", "garbage.kmp", "garbage.tst"})
        EXPECT_NE(read(name, garbage).end, End::NotOpened);

    const ListContents wide = read("wide.kms", "A\nB\n" + QByteArray(50 << 20, 'x') + "\nC\n");
    EXPECT_EQ(wide.end, End::Failed);
    EXPECT_EQ(listNotes::ofLoad(u"a.kms"_s, wide), u"a.kms: line 3: longer than 65536 characters");
    EXPECT_EQ(row(wide, 2), "B|");
    EXPECT_EQ(wide.table.rowCount(), 100);

    const ListContents nul = read("nul.kms", QByteArray("A\0B\xff\xa0\n", 6));
    EXPECT_EQ(nul.table.text(1, 1), QString::fromLatin1("A\0B\xff\xa0", 5));

    EXPECT_EQ(read("only.tst", QByteArray("// c\n").repeated(100000)).comments.size(), 400000);
    const TextTable millions = read("long.Tst", QByteArray("? SP x\n").repeated(1000000)).table;
    EXPECT_EQ(millions.rowCount(), 1000001);
    EXPECT_EQ(millions.text(1000000, 0), u"1000000");
    EXPECT_EQ(rowOf(millions, 0), u"Operator|Command|Value|Tolerance|Response");
}
