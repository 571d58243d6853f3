#include "platform/FileQuestions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace corvane::fileQuestions {

namespace {

constexpr qsizetype longestName = 255;
constexpr qsizetype longestPath = 4095;

bool isRefusedCharacter(QChar c)
{
#ifdef Q_OS_WIN
    return c < u' ' || QStringLiteral("<>:\"|?*").contains(c);
#else
    Q_UNUSED(c)
    return false;
#endif
}

} // namespace

QStringList nameFilters(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i];
        if (const auto patterns = description.lastIndexOf(u'('); patterns >= 0)
            description.truncate(patterns);
        const QString patterns = QString(parts[i + 1]).replace(u';', u' ');
        filters.append(QStringLiteral("%1 (%2)").arg(description.trimmed(), patterns));
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
    static const QRegularExpression typed(QStringLiteral("\\.[A-Za-z][A-Za-z0-9]{0,3}$"));
    if (path.isEmpty() || extension.isEmpty() || typed.match(path).hasMatch() ||
        path.endsWith(u'.' + extension, Qt::CaseInsensitive))
        return path;
    return path.endsWith(u'.') ? path + extension : path + u'.' + extension;
}

bool isRefusedName(const QString &path)
{
    const QFileInfo file(path);
    const QString name = file.fileName();
    // A folder, or a device or pipe, which saving would replace by a file.
    const bool isOther = name == u"." || name == u".." || (file.exists() && !file.isFile());
    return name.isEmpty() || isOther || std::ranges::any_of(name, isRefusedCharacter) ||
           path.contains(QChar::Null) || QFile::encodeName(name).size() > longestName ||
           QFile::encodeName(path).size() > longestPath || !file.dir().exists();
}

} // namespace corvane::fileQuestions
