// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFunctionPointer>
#include <QString>

/// The program's own modules, which are loaded when they are wanted and stay loaded.
namespace corvane::programModule {

struct Function
{
    const char *module;
    const char *name;
};
/// Loads a module, from beside the program, which is in `folder`, or from where modules are
/// installed. Throws PlatformError when `what` it holds ("the window") cannot be loaded.
QFunctionPointer load(const Function &function, const QString &folder, const QString &what);

} // namespace corvane::programModule
