// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/ListFile.h"

class QObject;

namespace corvane {

class Dialogs;

/// The part of a list file that a load which broke off has not read: saving over the file would
/// lose it. By default there is none.
class UnreadRest
{
public:
    UnreadRest() = default;
    UnreadRest(const QString &path, const ListContents &contents);

    /// What the user has to know before saving; empty when there is no rest.
    [[nodiscard]] QString warning() const;
    /// The path leads to the file with the rest.
    [[nodiscard]] bool isIn(const QString &path) const;
    /// The user may save to the path: nothing would be lost there, or the user, asked, wants it.
    [[nodiscard]] bool maySaveTo(const QString &path, Dialogs &dialogs, QObject *asker) const;

private:
    QString m_file; ///< canonical; empty: no rest
    int m_line = 0;
};

} // namespace corvane
