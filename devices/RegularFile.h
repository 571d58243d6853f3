// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QByteArrayView>
#include <QFile>
#include <QString>

/// Files that can neither make the program wait nor take a part and say that it was all. Every
/// function returns why it failed, without the path; empty when it is done.
namespace corvane::regularFile {

/// Opens the file. A folder, a pipe or a device is refused and never waited for, also when it takes
/// the file's place at this moment.
QString open(QFile &file, QIODevice::OpenMode mode);

/// Writes all the bytes past any buffer: a disk that is nearly full takes a part of them, and the
/// rest tells why not all. The file must be open unbuffered.
QString write(QFileDevice &file, QByteArrayView bytes);

/// Has what was written reach the disk: some file systems find only then that they are full.
QString sync(const QFileDevice &file);

/// What has befallen an open file of ours, which was made at this path and is to be so many bytes
/// long: it was removed, another took its place, or somebody else changed its length. Empty when
/// nothing has.
QString mishap(const QFileDevice &file, const QString &path, qint64 size);

/// True when both paths lead to one regular file, by whatever names. "-" is standard output.
bool isSame(const QString &one, const QString &other);

/// What is said of something that is there and is no regular file.
inline const QString refusal = u"it is no regular file"_s;

} // namespace corvane::regularFile
