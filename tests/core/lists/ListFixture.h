// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/TextTable.h"
#include "tests/support/Testing.h"

namespace corvane {

/// The list files of one test.
class ListFolder : public testing::Test
{
protected:
    QString path(const char *name) { return m_folder.filePath(QString::fromLatin1(name)); }

    QString file(const char *name, const QByteArray &text)
    {
        QFile out(path(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        EXPECT_EQ(out.write(text), text.size());
        return out.fileName();
    }

    QTemporaryDir m_folder;
};

/// A row without its number, "|" between the cells.
inline QString rowOf(const TextTable &table, int row)
{
    QStringList cells;
    for (int column = 1; column < table.columnCount(); ++column)
        cells.append(table.text(row, column).toString());
    return cells.join(u'|');
}

} // namespace corvane
