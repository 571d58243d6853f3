#include "platform/WholeFile.h"

#include <QFileInfo>
#include <QSaveFile>

namespace corvane {

QString wholeFile::write(const QString &path, const QByteArray &bytes)
{
    const QFileInfo there(path);
    if (there.exists() && !there.isFile())
        return QStringLiteral("it is no regular file");
    QSaveFile file(path);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return written ? QString() : file.errorString();
}

} // namespace corvane
