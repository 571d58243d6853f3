// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/FileQuestions.h"

#include "devices/Literals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace corvane::fileQuestions {

namespace {

constexpr qsizetype longestName = 255;
constexpr qsizetype longestPath = 4095;

/// A name that the system refuses, or keeps for a device.
bool isRefusedBySystem(const QString &name)
{
#ifdef Q_OS_WIN
    const auto isRefused = [](QChar c) { return c < u' ' || QStringView(u"<>:\"|?*").contains(c); };
    return std::ranges::any_of(name, isRefused) || isReservedOnWindows(name);
#else
    Q_UNUSED(name)
    return false;
#endif
}

} // namespace

QStringList nameFilters(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = QString(parts[i + 1]).replace(u';', u' ');
        const bool shows = parts[i].endsWith(u'(' + patterns + u')');
        filters.append(shows ? parts[i] : u"%1 (%2)"_s.arg(parts[i], patterns));
    }
    return filters;
}

QString extensionOf(const QString &nameFilter)
{
    const auto first = nameFilter.lastIndexOf(u'(') + 1;
    const QString pattern = nameFilter.mid(first).section(u')', 0, 0).section(u' ', 0, 0);
    const QString extension = pattern.mid(pattern.lastIndexOf(u'.') + 1);
    return extension.contains(u'*') ? QString() : extension;
}

QString withExtension(const QString &path, const QString &extension)
{
    static const QRegularExpression typed(u"\\.[A-Za-z][A-Za-z0-9]{0,3}$"_s);
    if (path.isEmpty() || extension.isEmpty() || typed.match(path).hasMatch() ||
        path.endsWith(u'.' + extension, Qt::CaseInsensitive))
        return path;
    return path.endsWith(u'.') ? path + extension : path + u'.' + extension;
}

bool isReservedOnWindows(const QString &name)
{
    // The system takes the superscript digits 1 to 3 for digits, too.
    static const QRegularExpression reserved(
        u"^(con|prn|aux|nul|(com|lpt)[1-9\u00b9\u00b2\u00b3]|conin\\$|conout\\$)"
        " *(\\.|$)"_s,
        QRegularExpression::CaseInsensitiveOption);
    return reserved.match(name).hasMatch();
}

bool isRefusedName(const QString &path)
{
    const QFileInfo file(path);
    const QString name = file.fileName();
    // A folder, or a device or pipe, which saving would replace by a file.
    const bool isOther = name == u"." || name == u".." || (file.exists() && !file.isFile());
    return name.isEmpty() || isOther || isRefusedBySystem(name) || path.contains(QChar::Null) ||
           QFile::encodeName(name).size() > longestName ||
           QFile::encodeName(path).size() > longestPath || !file.dir().exists();
}

QString refusalOf(const QString &path)
{
    const QFileInfo file(path);
    return file.dir().exists() ? u"no file can have this name"_s
                               : u"there is no folder "_s + QDir::toNativeSeparators(file.path());
}

} // namespace corvane::fileQuestions
