// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/RegularFile.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace corvane {

namespace {

#ifdef Q_OS_UNIX

int unixFlags(QIODevice::OpenMode mode)
{
    // Opening a pipe would wait for its other end, a terminal could become the program's own.
    int flags = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const bool writes = mode.testFlag(QIODevice::WriteOnly) || mode.testFlag(QIODevice::Append);
    if (mode.testFlag(QIODevice::ReadWrite))
        flags |= O_RDWR;
    else if (writes)
        flags |= O_WRONLY;
    if (writes && !mode.testFlag(QIODevice::ExistingOnly))
        flags |= O_CREAT;
    if (mode.testFlag(QIODevice::Append))
        flags |= O_APPEND;
    return mode.testFlag(QIODevice::NewOnly) ? flags | O_EXCL : flags;
}

bool isOne(const struct stat &file, const struct stat &other)
{
    return file.st_dev == other.st_dev && file.st_ino == other.st_ino;
}

QString openWithoutWaiting(QFile &file, QIODevice::OpenMode mode)
{
    const int handle =
        ::open(QFile::encodeName(file.fileName()).constData(), unixFlags(mode), 0666);
    if (handle < 0)
        return qt_error_string(errno);
    struct stat opened = {};
    if (fstat(handle, &opened) != 0 || !S_ISREG(opened.st_mode)) {
        close(handle);
        return regularFile::refusal;
    }
    // The toolkit does that only for a file that it opens by its name.
    const bool isEmptied = !mode.testFlag(QIODevice::Truncate) || ftruncate(handle, 0) == 0;
    const QString fault = isEmptied ? QString() : qt_error_string(errno);
    if (isEmptied && file.open(handle, mode, QFileDevice::AutoCloseHandle))
        return {};
    close(handle);
    return isEmptied ? file.errorString() : fault;
}

#else

QString openWithoutWaiting(QFile &file, QIODevice::OpenMode mode)
{
    return file.open(mode) ? QString() : file.errorString();
}

#endif

} // namespace

QString regularFile::open(QFile &file, QIODevice::OpenMode mode)
{
    // A device is not even opened to be looked at: that alone sets some of them going.
    const QFileInfo there(file.fileName());
    if (there.exists() && !there.isFile())
        return refusal;
    return openWithoutWaiting(file, mode);
}

QString regularFile::write(QFileDevice &file, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const qint64 taken = file.write(bytes.data(), bytes.size());
        if (taken <= 0)
            return file.errorString();
        bytes = bytes.sliced(taken);
    }
    return {};
}

QString regularFile::mishap(const QFileDevice &file, const QString &path, qint64 size)
{
#ifdef Q_OS_UNIX
    struct stat ours = {};
    struct stat there = {};
    if (::stat(QFile::encodeName(path).constData(), &there) != 0)
        return u"the file has gone"_s;
    if (fstat(file.handle(), &ours) != 0 || !isOne(ours, there))
        return u"another file has taken its place"_s;
#else
    if (!QFile::exists(path))
        return u"the file has gone"_s;
#endif
    return file.size() == size ? QString() : u"somebody else has changed the file"_s;
}

bool regularFile::isSame(const QString &one, const QString &other)
{
#ifdef Q_OS_UNIX
    const auto look = [](const QString &path, struct stat &found) {
        return (path == u"-" ? fstat(STDOUT_FILENO, &found)
                             : ::stat(QFile::encodeName(path).constData(), &found)) == 0 &&
               S_ISREG(found.st_mode);
    };
    struct stat first = {};
    struct stat second = {};
    return look(one, first) && look(other, second) && isOne(first, second);
#else
    Q_UNUSED(one)
    Q_UNUSED(other)
    return false;
#endif
}

QString regularFile::sync(const QFileDevice &file)
{
#ifdef Q_OS_UNIX
    constexpr auto cannotSync = [](int error) { return error == EINVAL || error == ENOTSUP; };
    if (fsync(file.handle()) != 0 && !cannotSync(errno))
        return qt_error_string(errno);
#else
    Q_UNUSED(file)
#endif
    return {};
}

} // namespace corvane
