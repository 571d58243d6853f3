// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>

#include <functional>

class QObject;

namespace corvane {

class Dialogs;
class ProgramLauncher;

/// A value of the operating system's registry under HKEY_LOCAL_MACHINE, by its key and its name: a
/// string, or a number of 32 or 64 bits; invalid when there is none.
using RegistryReader = std::function<QVariant(const QString &key, const QString &name)>;

/// The Windows registry; elsewhere one that holds nothing.
RegistryReader systemRegistry();

/// Locates and starts the operating system's system-information tool. It leaves the starting to
/// ProgramLauncher.
class SystemInfo
{
public:
    /// The launcher and the dialogs must outlive the object.
    SystemInfo(RegistryReader registry, ProgramLauncher &launcher, Dialogs &dialogs);

    /// Starts the tool that the registry names, or one that is installed; shows a message over
    /// `asker`'s window when there is none or it does not start.
    void StartSysInfo(QObject *asker = nullptr);

    /// Reads one registry value; false when the key or the value is not there or the value is
    /// longer than 1024 characters. A string comes as its text, a number in hexadecimal behind
    /// "&h", two digits a byte: the 32-bit number 16 is "&h00000010".
    bool GetKeyValue(const QString &key, const QString &name, QString &value) const;

private:
    [[nodiscard]] bool startRegistered();
    [[nodiscard]] bool startInstalled();

    const RegistryReader m_registry;
    ProgramLauncher &m_launcher;
    Dialogs &m_dialogs;
};

} // namespace corvane
