// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/about/ProgramLauncher.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace corvane {

bool QtProgramLauncher::fileExists(const QString &path) const
{
    return QFileInfo(path).isFile();
}

QString QtProgramLauncher::findProgram(const QString &name) const
{
    return QStandardPaths::findExecutable(name);
}

bool QtProgramLauncher::start(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice()); // its chatter is not ours
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

} // namespace corvane
