// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::wholeFile {

/// Writes a file whole or not at all, so that a failed save leaves the old file as it was: through
/// a temporary one that takes its place, or, where the folder does not let that be, over the old
/// file itself, whose content is put back when that fails. Links are followed and stay; the
/// permissions stay; what is there and is no regular file, as a device, is left alone.
///
/// Returns why it failed, without the path, and says so when the old content is gone; empty when
/// all is written.
QString write(const QString &path, const QByteArray &bytes);

/// Why a write there would fail as things are now; empty when it would not. Leaves what is there as
/// it is, and nothing where nothing was.
QString refusal(const QString &path);

/// The path of what is written: behind all links, whether or not it is there.
QString target(QString path);

} // namespace corvane::wholeFile
