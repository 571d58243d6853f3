// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/SerialLock.h"

#include "devices/Literals.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <unistd.h>
#endif

#include <charconv>
#include <cstring>

namespace corvane::serialLock {

QString Holder::toString() const
{
    if (isOwn)
        return u"another Channel"_s;
    if (process == 0)
        return u"whoever wrote %1, which cannot be read"_s.arg(file);
    return program.isEmpty() ? u"process %1"_s.arg(process)
                             : u"%1 (process %2)"_s.arg(program, QString::number(process));
}

Note noteIn(const QByteArray &content)
{
    // In binary a byte may look like a digit or a line's end, but the highest one is 0.
    if (int process = 0; content.size() == sizeof process && content.contains('\0')) {
        std::memcpy(&process, content.constData(), sizeof process);
        return {process};
    }
    const QByteArray text = content.trimmed();
    Note note{.program = QString::fromLocal8Bit(text.split('\n').value(1)).trimmed()};
    std::from_chars(text.begin(), text.end(), note.process);
    return note;
}

#ifdef Q_OS_UNIX

namespace {

const char *const folders[] = {"/var/lock",  "/run/lock",        "/var/lock/lockdev",
                               "/etc/locks", "/var/spool/locks", "/var/spool/uucp",
                               "/tmp"};

/// The names under which programs lock a device below a folder of /dev.
QStringList lockNames(const QString &device)
{
    const QString name = device.startsWith(u"/dev/") ? device.mid(5) : device;
    QStringList names = {QString(name).replace(u'/', u'_')};
    if (name.startsWith(u"pts/"))
        return names; // "3" alone would say little
    names.append(name.section(u'/', -1));
    names.removeDuplicates();
    return names;
}

bool isAlive(qint64 process)
{
    return process > 0 && (::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM);
}

QString programOf(qint64 process)
{
    QFile name(u"/proc/%1/comm"_s.arg(process));
    return name.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(name.readAll()).trimmed()
                                          : QString();
}

/// Whether another program runs under the number by now.
bool isAnotherProgram(const Note &note)
{
    QString file = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(note.process));
    if (constexpr QLatin1String replaced(" (deleted)"); file.endsWith(replaced))
        file.chop(replaced.size()); // it runs on, under the name that it was started by
    return !note.program.isEmpty() && !file.isEmpty() && file.section(u'/', -1) != note.program;
}

/// Who holds the lock file; nothing when it is not there or left over.
std::optional<Holder> holderOf(const QString &path)
{
    QFile lock(path);
    if (!lock.exists())
        return {};
    Holder holder{.file = path};
    if (!lock.open(QIODevice::ReadOnly))
        return lock.exists() ? std::optional(holder) : std::nullopt;
    constexpr qint64 longest = 512;
    const Note note = noteIn(lock.read(longest));
    if (!isAlive(note.process) || isAnotherProgram(note)) {
        // The toolkit would let a lock that it cannot read stand for half a minute.
        if (note.process > 0)
            lock.remove();
        return {};
    }
    holder.process = note.process;
    holder.program = programOf(holder.process);
    holder.isOwn = holder.process == ::getpid();
    return holder;
}

} // namespace

std::optional<Holder> holder(const QString &device)
{
    for (const char *folder : folders) {
        for (const QString &name : lockNames(device)) {
            auto found = holderOf(u"%1/LCK..%2"_s.arg(QLatin1String(folder), name));
            if (found)
                return found;
        }
    }
    return {};
}

std::optional<Holder> user(const QString &device)
{
    if (auto found = holder(device))
        return found;
    QStringList processes = QDir(u"/proc"_s).entryList({u"[1-9]*"_s}, QDir::Dirs);
    processes.removeOne(QString::number(::getpid()));
    for (const QString &process : processes) {
        const QDir files(u"/proc/%1/fd"_s.arg(process));
        for (const QString &file : files.entryList(QDir::System | QDir::Files)) {
            if (QFile::symLinkTarget(files.filePath(file)) == device) {
                const qint64 number = process.toLongLong();
                return Holder{number, programOf(number)};
            }
        }
    }
    return {};
}

#else

std::optional<Holder> holder(const QString &)
{
    return {};
}

std::optional<Holder> user(const QString &)
{
    return {};
}

#endif

} // namespace corvane::serialLock
