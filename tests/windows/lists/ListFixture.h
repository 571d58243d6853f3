#pragma once

#include "tests/support/ScriptedDialogs.h"
#include "tests/windows/lists/FakeListHost.h"
#include "windows/lists/CommandListArea.h"
#include "windows/widgets/TextGrid.h"

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

/// The real list area over a fake main window.
class ListFixture : public ListFolder
{
protected:
    Module1 m_module;
    FakeListHost m_host;
    ScriptedDialogs m_dialogs;
    CommandListArea m_area{m_module, m_host, m_dialogs};
    TextGrid &m_grid = *m_area.flexgridVDL;
};

} // namespace corvane
