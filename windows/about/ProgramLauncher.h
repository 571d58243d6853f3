// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace corvane {

/// Finds and starts other programs; the seam by which a test starts none.
class ProgramLauncher
{
public:
    virtual ~ProgramLauncher() = default;

    [[nodiscard]] virtual bool fileExists(const QString &path) const = 0;
    /// The path of an installed program; empty when there is none of that name.
    [[nodiscard]] virtual QString findProgram(const QString &name) const = 0;
    /// Starts a program that lives on by itself, in a normal window. False when it cannot start.
    virtual bool start(const QString &program, const QStringList &arguments) = 0;

protected:
    ProgramLauncher() = default;
    Q_DISABLE_COPY_MOVE(ProgramLauncher)
};

/// The real one: searches the PATH, starts detached processes.
class QtProgramLauncher : public ProgramLauncher
{
public:
    QtProgramLauncher() = default;

    [[nodiscard]] bool fileExists(const QString &path) const override;
    [[nodiscard]] QString findProgram(const QString &name) const override;
    bool start(const QString &program, const QStringList &arguments) override;
};

} // namespace corvane
