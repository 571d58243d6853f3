#include "lists/ListText.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

const char *const extensions[] = {"a.kms", "a.kmp", "a.tst"};

/// Writes the list as text and reads the text back.
class ListText : public testing::Test
{
protected:
    ListContents readBack(const ListContents &list)
    {
        const QString path =
            m_folder.filePath(QString::fromLatin1(extensions[static_cast<std::size_t>(list.kind)]));
        m_text = listText::ofList(list.kind, list.table, list.comments, list.constants);
        EXPECT_TRUE(listFile::write(path, m_text));
        return listFile::read(path);
    }

    static ListContents listOf(int kind, const std::vector<QStringList> &rows)
    {
        ListContents list;
        list.kind = kind;
        list.table = listFile::emptyTable(kind, 1 + static_cast<int>(rows.size()));
        for (int row = 1; row < list.table.rowCount(); ++row) {
            const QStringList &cells = rows[static_cast<std::size_t>(row - 1)];
            list.table.setText(row, 0, QString::number(row));
            for (int column = 1; column <= cells.size(); ++column)
                list.table.setText(row, column, cells[column - 1]);
        }
        return list;
    }

    static QStringList cells(const TextTable &table)
    {
        QStringList all;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList line;
            for (int column = 0; column < table.columnCount(); ++column)
                line.append(table.text(row, column).toString());
            all.append(line.join(u'|'));
        }
        return all;
    }

    QTemporaryDir m_folder;
    QString m_text;
};

} // namespace

TEST_F(ListText, ReadsBackToTheSameListForAllThreeKinds)
{
    ListContents lists[] = {
        listOf(0, {{u"SP"_s},
                   {u"= SP"_s, u"50"_s},
                   {u"SP 50"_s},
                   {u"SP "_s},
                   {},
                   {u"UUT1"_s, u"serial  4711"_s},
                   {u"uut"_s},
                   {u"\u00e9\t"_s}}),
        listOf(1, {{u"="_s, u"SP"_s, u"50  60"_s},
                   {u"="_s, u"SP"_s},
                   {u"="_s, {}, u"50"_s},
                   {u"="_s},
                   {},
                   {u"=X"_s, u"SP"_s, u"1"_s}}),
        listOf(2, {{u"="_s, u"SP"_s, u"25 26"_s},
                   {u"="_s, u"SP"_s},
                   {u"?"_s, u"SP"_s, u"x"_s},
                   {u"?"_s, u"SP"_s},
                   {u"!"_s, u"SP"_s, u"25"_s, u"0.5"_s},
                   {u"!"_s, u"SP"_s, {}, u"0.5"_s},
                   {u"!"_s, {}, u"25"_s},
                   {u"!"_s, u"ID"_s, u"\"READY  OR \"NOT\"\""_s},
                   {u"#"_s},
                   {u"wait"_s},
                   {u"=SP"_s},
                   {}}),
    };
    for (ListContents &list : lists) {
        list.comments = QStringLiteral(" a\r\n\r\nb // c\r\n\\\\d\r\n");
        if (list.kind == 2)
            list.constants = {{u"A"_s, 0.1F}, {u"B"_s, -1e30F}, {QString(), 1.0F}};
        const ListContents back = readBack(list);
        EXPECT_EQ(back.end, ListContents::End::Complete) << m_text.toStdString();
        EXPECT_EQ(cells(back.table), cells(list.table)) << m_text.toStdString();
        EXPECT_EQ(back.comments, list.comments);
        EXPECT_EQ(back.constants, list.constants);
    }
}

TEST_F(ListText, WhatTheSyntaxCannotHoldKeepsItsRowAndWhatIsSent)
{
    const ListContents settings =
        readBack(listOf(0, {{u"SP"_s, u"50"_s}, {{}, u"50"_s}, {u"T"_s}}));
    EXPECT_EQ(m_text, u"= SP 50\r\n   50\r\nT\r\n");
    EXPECT_EQ(settings.table.text(1, 1), u"= SP"); // sent as "= SP 50" either way
    EXPECT_EQ(settings.table.text(1, 2), u"50");
    EXPECT_EQ(settings.table.text(3, 1), u"T");

    const ListContents tests = readBack(
        listOf(2, {{u"!"_s, u"ID"_s, u"READY NOW"_s}, {u"!"_s, u"ID"_s, u"\"A\""_s, u"1"_s}}));
    EXPECT_EQ(tests.table.text(1, 3), u"\"READY NOW\""); // judged alike
    EXPECT_EQ(tests.table.text(2, 3), u"\"A\"");         // a tolerance means nothing to a text
    EXPECT_EQ(tests.table.rowCount(), 3);
}
