#pragma once

#include "windows/about/RegistryApi.h"

#include <QString>

class QObject;

namespace corvane {

class Dialogs;
class ProgramLauncher;

/// Locates and starts the operating system's system-information tool. It leaves the registry's
/// calls to RegistryApi and the starting to ProgramLauncher.
class SystemInfo
{
public:
    /// All three must outlive the object.
    SystemInfo(RegistryApi &registry, ProgramLauncher &launcher, Dialogs &dialogs);

    /// Starts the tool that the registry names, or one that is installed; shows a message over
    /// `asker`'s window when there is none or it does not start.
    void StartSysInfo(QObject *asker = nullptr);

    /// Reads one registry value; false when the key or the value is not there or the value is
    /// longer than 1024 characters. A string comes as its text. Any other value comes as a number
    /// in hexadecimal behind "&h", two digits a byte. Its most significant byte leads, which is
    /// the last one stored: the 32-bit number 16 is "&h00000010".
    bool GetKeyValue(RegistryApi::Root root, const QString &key, const QString &name,
                     QString &value);

private:
    [[nodiscard]] bool startRegistered();
    [[nodiscard]] bool startInstalled();

    RegistryApi &m_registry;
    ProgramLauncher &m_launcher;
    Dialogs &m_dialogs;
};

} // namespace corvane
