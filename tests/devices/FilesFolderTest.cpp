// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/FilesFolder.h"

#include "devices/PlatformError.h"
#include "tests/support/Testing.h"

using namespace corvane;

/// A file in a folder's place stands for every folder that cannot be written: also for root.
TEST(FilesFolder, IsTheFirstThatCanBeWritten)
{
    const QTemporaryDir desk;
    const auto at = [&](const char16_t *name) { return desk.filePath(QString::fromUtf16(name)); };
    QDir(desk.path()).mkdir(u"own"_s);
    QDir(desk.path()).mkdir(u"home"_s);
    QFile(at(u"file")).open(QIODevice::WriteOnly);
    const struct
    {
        const char16_t *own;
        const char16_t *documents;
        const char16_t *home;
        const char16_t *chosen;
    } rows[] = {
        {u"own", u"home/new", u"home", u"own"},
        {u"file", u"file/Documents", u"home", u"home"},
        {u"file", u"file", u"none", u"file"},
        {u"none", u"none/Documents", u"none", u"none"},
        {u"file", u"home/new", u"home", u"home/new"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(filesFolder::choose({}, at(row.own), {at(row.documents), at(row.home)}),
                  at(row.chosen));
        EXPECT_EQ(QFileInfo::exists(at(u"home/new")), at(row.chosen) == at(u"home/new"));
    }
    EXPECT_FALSE(QFileInfo::exists(at(u"none")));
    EXPECT_EQ(QDir(at(u"own")).entryList(QDir::Hidden | QDir::Files), QStringList());

    EXPECT_EQ(filesFolder::choose(at(u"home"), at(u"own"), {}), at(u"home"));
    EXPECT_TRUE(QDir::isAbsolutePath(filesFolder::choose(u"."_s, at(u"own"), {})));
    EXPECT_THROW(filesFolder::choose(at(u"file"), at(u"own"), {}), PlatformError);
    EXPECT_THROW(filesFolder::choose(at(u"none"), at(u"own"), {}), PlatformError);
    EXPECT_THROW(filesFolder::choose(u"/proc"_s, at(u"own"), {}), PlatformError);
}
