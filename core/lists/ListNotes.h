// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/ListFile.h"

/// What is said of a list and its file beside the fixed messages; empty when there is nothing to
/// say.
namespace corvane::listNotes {

/// Why the reading ended early, and what of the file is not in the list.
QString ofLoad(const QString &path, const ListContents &contents);

/// The file could not be written.
QString ofFault(const QString &path, const QString &reason);

/// The rows of a chamber settings list that saving leaves out: those below the first without a
/// command.
QString ofSave(const TextTable &table);

} // namespace corvane::listNotes
