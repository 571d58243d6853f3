// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/WholeFile.h"

#include "devices/FileQuestions.h"
#include "devices/Literals.h"
#include "devices/RegularFile.h"

#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <optional>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace corvane {

namespace {

constexpr int mostLinks = 40;

/// Why no file can have this path, whatever its folder allows; the path is no link.
QString refusalOfPath(const QString &path)
{
    const QFileInfo there(path);
    if (there.isSymbolicLink() || (there.exists() && !there.isFile()))
        return regularFile::refusal;
#ifdef Q_OS_WIN
    if (fileQuestions::isReservedOnWindows(there.fileName()))
        return u"the name belongs to a device"_s;
#endif
    return {};
}

/// As far as the user may: a file of a group that works together stays the group's.
void keepOwner(const QFileDevice &made, const QString &old)
{
#ifdef Q_OS_UNIX
    struct stat was = {};
    if (stat(QFile::encodeName(old).constData(), &was) != 0)
        return;
    const bool kept = fchown(made.handle(), was.st_uid, was.st_gid) == 0 ||
                      fchown(made.handle(), static_cast<uid_t>(-1), was.st_gid) == 0;
    Q_UNUSED(kept)
#else
    Q_UNUSED(made)
    Q_UNUSED(old)
#endif
}

/// Through a temporary file beside the old one. Nothing when the folder does not let one be made or
/// take the old one's place; otherwise why it failed.
std::optional<QString> replace(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return std::nullopt;
    keepOwner(file, path);
    QString fault = regularFile::write(file, bytes);
    if (fault.isEmpty())
        fault = regularFile::sync(file);
    if (!fault.isEmpty())
        return fault;
    return file.commit() ? std::optional<QString>(QString()) : std::nullopt;
}

/// What goes beyond the old content goes first, so that a full disk is met before any of that is
/// lost.
QString overwrite(QFile &file, const QByteArray &bytes)
{
    const auto before = std::min<qsizetype>(bytes.size(), file.size());
    const auto writeAt = [&file](qsizetype at, QByteArrayView part) {
        return file.seek(at) ? regularFile::write(file, part) : file.errorString();
    };
    QString fault = writeAt(before, QByteArrayView(bytes).sliced(before));
    if (fault.isEmpty())
        fault = writeAt(0, QByteArrayView(bytes).first(before));
    if (!fault.isEmpty())
        return fault;
    return file.resize(bytes.size()) ? regularFile::sync(file) : file.errorString();
}

QString putBack(QFile &file, const QByteArray &old)
{
    const QString fault = file.resize(old.size()) ? overwrite(file, old) : file.errorString();
    const bool asBefore = file.seek(0) && file.readAll() == old;
    return asBefore ? QString() : u"; the old content could not be put back: "_s + fault;
}

/// Opens the file itself to be written over; makes it when there is none.
QString openInPlace(QFile &file)
{
    const auto must = file.exists() ? QIODevice::ExistingOnly : QIODevice::NewOnly;
    return regularFile::open(file, QIODevice::ReadWrite | QIODevice::Unbuffered | must);
}

QString writeInPlace(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    const bool isNew = !file.exists();
    QString fault = openInPlace(file);
    if (!fault.isEmpty())
        return fault;
    const QByteArray old = file.readAll();
    if (old.size() != file.size())
        return file.errorString();
    fault = overwrite(file, bytes);
    if (fault.isEmpty())
        return {};
    if (!isNew)
        return fault + putBack(file, old);
    file.close();
    QFile::remove(path);
    return fault;
}

} // namespace

QString wholeFile::target(QString path)
{
    for (int link = 0; link < mostLinks && QFileInfo(path).isSymbolicLink(); ++link)
        path = QFileInfo(path).symLinkTarget();
    return path;
}

QString wholeFile::refusal(const QString &path)
{
    const QString target = wholeFile::target(path);
    if (QString refused = refusalOfPath(target); !refused.isEmpty())
        return refused;
    // Discards the file that it makes, as nothing is committed.
    if (QSaveFile beside(target); beside.open(QIODevice::WriteOnly))
        return {};
    QFile file(target);
    const bool isNew = !file.exists();
    QString fault = openInPlace(file);
    file.close();
    if (isNew && fault.isEmpty())
        QFile::remove(target);
    return fault;
}

QString wholeFile::write(const QString &path, const QByteArray &bytes)
{
    const QString target = wholeFile::target(path);
    if (QString refused = refusalOfPath(target); !refused.isEmpty())
        return refused;
    if (const auto fault = replace(target, bytes))
        return *fault;
    return writeInPlace(target, bytes);
}

} // namespace corvane
