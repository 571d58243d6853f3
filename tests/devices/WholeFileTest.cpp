// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/WholeFile.h"

#include "tests/support/Testing.h"
#include "tests/support/WriteLimit.h"

#include <sys/stat.h>

using namespace corvane;

namespace {

/// Each test runs on a file that can be replaced, and on one that can only be written over: its
/// name leaves no room for a temporary file's beside it.
class WholeFile : public testing::TestWithParam<int>
{
protected:
    [[nodiscard]] QByteArray content(const QString &name) const
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("nothing");
    }
    [[nodiscard]] qsizetype files() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
            .size();
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QString(GetParam(), u'x'));
};

} // namespace

INSTANTIATE_TEST_SUITE_P(ReplacedAndOver, WholeFile, testing::Values(8, 252));

TEST_P(WholeFile, OnAFullDiskTheOldFileIsWholeAndANewOneIsNotLeft)
{
    for (const QByteArray old : {"", "old", "an old content that is longer"}) {
        ASSERT_EQ(wholeFile::write(path, old), QString());
        for (const qsizetype size : {5, 100, 100'000}) {
            for (const bool isNew : {false, true}) {
                const QString target = isNew ? path.chopped(1) : path;
                QString fault;
                {
                    const WriteLimit full(4);
                    fault = wholeFile::write(target, QByteArray(size, 'n'));
                }
                EXPECT_EQ(fault, u"File too large") << size;
                EXPECT_EQ(content(target), isNew ? "nothing"_ba : old) << size;
            }
        }
    }
    EXPECT_EQ(wholeFile::write(path, "new"), QString());
    EXPECT_EQ(content(path), "new");
    EXPECT_EQ(files(), 1);
}

TEST_P(WholeFile, BehindLinksTheFileIsWrittenAndLinksAndPermissionsStay)
{
    const QString near = folder.filePath(u"near"_s);
    const QString far = folder.filePath(u"far"_s);
    ASSERT_TRUE(QFile::link(path, near) && QFile::link(u"near"_s, far));
    EXPECT_EQ(wholeFile::write(far, "made"), QString()); // where the link leads is nothing yet
    const QFile::Permissions kept = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(path, kept));
    EXPECT_EQ(wholeFile::write(far, "new"), QString());
    EXPECT_EQ(content(path), "new");
    EXPECT_EQ(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser), kept);
    EXPECT_TRUE(QFileInfo(far).isSymLink() && QFileInfo(near).isSymLink());
    EXPECT_EQ(files(), 3);

    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(u"round"_s, folder.filePath(u"round"_s)));
    for (const QString &refused : {pipe, folder.path(), folder.filePath(u"round"_s)}) {
        EXPECT_EQ(wholeFile::write(refused, "new"), u"it is no regular file");
        EXPECT_EQ(wholeFile::refusal(refused), u"it is no regular file");
    }
    const qsizetype before = files();
    for (const QString &open : {far, path, path.chopped(1)})
        EXPECT_EQ(wholeFile::refusal(open), QString());
    EXPECT_EQ(files(), before);
    EXPECT_EQ(content(path), "new");
}
