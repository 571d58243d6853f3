// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListText.h"

#include "ListFixture.h"
#include "core/lists/ListKinds.h"

using namespace corvane;

namespace {

/// Writes the list as text and reads the text back.
class ListText : public ListFolder
{
protected:
    ListContents readBack(const ListContents &list)
    {
        m_text = listText::ofList(list.kind, list.table, list.comments, list.constants);
        const QString name = u"a."_s + listKinds::layout(list.kind).ending();
        return listFile::read(file(qPrintable(name), m_text.toLatin1()));
    }

    /// A list of the rows given as lines, "|" between their cells.
    static ListContents listOf(int kind, const QString &text)
    {
        ListContents list;
        list.kind = kind;
        const QStringList rows = text.split(u'\n');
        list.table = listFile::emptyTable(kind, 1 + static_cast<int>(rows.size()));
        for (int row = 1; row < list.table.rowCount(); ++row) {
            const QStringList cells = (QString::number(row) + u'|' + rows[row - 1]).split(u'|');
            for (int column = 0; column < cells.size(); ++column)
                list.table.setText(row, column, cells[column]);
        }
        return list;
    }

    static QStringList rows(const TextTable &table)
    {
        QStringList all;
        for (int row = 0; row < table.rowCount(); ++row)
            all.append(rowOf(table, row));
        return all;
    }

    QString m_text;
};

} // namespace

TEST_F(ListText, ReadsBackToTheSameListForAllThreeKinds)
{
    ListContents lists[] = {
        listOf(0, u"SP\n= SP|50\nSP 50\nSP \nUUT1|serial  4711\nuut\n\u00e9\t"_s),
        listOf(1, u"=|SP|50  60\n=|SP\n=||50\n=\n=X|SP|1"_s),
        listOf(2, u"=|SP|25 26\n=|SP\n?|SP|x\n?|SP\n!|SP|25|0.5\n!|SP||0.5\n!||25\n"
                  "!|ID|\"READY  OR \"NOT\"\"\n#\nwait\n=SP"_s)};
    for (ListContents &list : lists) {
        list.comments = u" a\r\n\r\nb // c\r\n\\\\d\r\n"_s;
        if (list.kind == 2)
            list.constants = {{u"A"_s, 0.1F}, {u"B"_s, -1e30F}, {QString(), 1.0F}};
        const ListContents back = readBack(list);
        EXPECT_EQ(back.end, ListContents::End::Complete) << m_text.toStdString();
        EXPECT_EQ(rows(back.table), rows(list.table)) << m_text.toStdString();
        EXPECT_EQ(back.comments, list.comments);
        EXPECT_EQ(back.constants, list.constants);
    }
}

TEST_F(ListText, WhatTheSyntaxCannotHoldKeepsItsRowAndWhatIsSent)
{
    // A word with a value is sent with "=" either way; a value alone stays a syntax error.
    readBack(listOf(0, u"SP|50\n|50\nT"_s));
    EXPECT_EQ(m_text, u"= SP 50\r\n   50\r\nT\r\n");
    // Quotes do not change what a check means, and to a text a tolerance means nothing.
    readBack(listOf(2, u"!|ID|READY NOW\n!|ID|\"A\"|1"_s));
    EXPECT_EQ(m_text, u"! ID \"READY NOW\"\r\n! ID \"A\"\r\n");
    // Nothing that was typed becomes a mere pause, and a row that holds nothing gives no line.
    readBack(listOf(2, u"|SP|25\n\n#|SP\nwait||5\n=SP|25\n||||25.0"_s));
    EXPECT_EQ(m_text, u" SP 25 # PAUSE\r\n# PAUSE SP\r\nwait 5 # PAUSE\r\n=SP 25\r\n");
}
