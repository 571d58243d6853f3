#include "platform/WholeFile.h"

#include "platform/FileQuestions.h"

#include <QFileInfo>
#include <QSaveFile>

namespace corvane {

namespace {

/// Why no file can have this path, whatever its folder allows.
QString refusalOfPath(const QString &path)
{
    const QFileInfo there(path);
    if (there.exists() && !there.isFile())
        return QStringLiteral("it is no regular file");
#ifdef Q_OS_WIN
    if (fileQuestions::isReservedOnWindows(there.fileName()))
        return QStringLiteral("the name belongs to a device");
#endif
    return {};
}

} // namespace

QString wholeFile::refusal(const QString &path)
{
    if (const QString refused = refusalOfPath(path); !refused.isEmpty())
        return refused;
    QSaveFile file(path); // discards the file that it makes, as nothing is committed
    return file.open(QIODevice::WriteOnly) ? QString() : file.errorString();
}

QString wholeFile::write(const QString &path, const QByteArray &bytes)
{
    if (const QString refused = refusalOfPath(path); !refused.isEmpty())
        return refused;
    QSaveFile file(path);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return written ? QString() : file.errorString();
}

} // namespace corvane
