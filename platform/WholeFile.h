#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::wholeFile {

/// Writes a file whole or not at all: through a temporary one and a rename, so that a failed save
/// leaves the old file as it was. What is there and is no file, as a device, is left alone.
/// Returns why it failed, without the path; empty when it is written.
QString write(const QString &path, const QByteArray &bytes);

/// Why a write there would fail as things are now; empty when it would not. Leaves what is there as
/// it is, and nothing where nothing was.
QString refusal(const QString &path);

} // namespace corvane::wholeFile
