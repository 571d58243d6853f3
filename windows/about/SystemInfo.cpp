// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/about/SystemInfo.h"

#include "core/text/Dialogs.h"
#include "windows/about/AboutTexts.h"
#include "windows/about/ProgramLauncher.h"

#include <QSettings>

#include <algorithm>
#include <array>

namespace corvane {

namespace {

/// With the zero that ends it.
constexpr qsizetype longestValue = 1024;

struct Tool
{
    QString name;
    QStringList arguments{};
};

/// Where no registry names a tool: those that are known to show the computer, the most telling
/// first.
const std::array knownTools{
    Tool{u"hardinfo2"_s},
    Tool{u"hardinfo"_s},
    Tool{u"kinfocenter"_s},
    Tool{u"gnome-control-center"_s, {u"info-overview"_s}},
};

} // namespace

RegistryReader systemRegistry()
{
#ifdef Q_OS_WIN
    return [](const QString &key, const QString &name) {
        return QSettings(u"HKEY_LOCAL_MACHINE\\"_s + key, QSettings::NativeFormat).value(name);
    };
#else
    return [](const QString &, const QString &) { return QVariant(); };
#endif
}

SystemInfo::SystemInfo(RegistryReader registry, ProgramLauncher &launcher, Dialogs &dialogs)
    : m_registry(std::move(registry))
    , m_launcher(launcher)
    , m_dialogs(dialogs)
{
}

void SystemInfo::StartSysInfo(QObject *asker)
{
    if (!startRegistered() && !startInstalled())
        m_dialogs.showMessage(asker, aboutTexts::noSystemInfo);
}

bool SystemInfo::startRegistered()
{
    QString program;
    if (GetKeyValue(u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s, u"PATH"_s, program))
        return m_launcher.start(program, {});
    QString folder;
    if (!GetKeyValue(u"SOFTWARE\\Microsoft\\Shared Tools Location"_s, u"MSINFO"_s, folder))
        return false;
    program = folder + u"\\MSINFO32.EXE"_s;
    return m_launcher.fileExists(program) && m_launcher.start(program, {});
}

bool SystemInfo::startInstalled()
{
    return std::ranges::any_of(knownTools, [this](const Tool &tool) {
        const QString program = m_launcher.findProgram(tool.name);
        return !program.isEmpty() && m_launcher.start(program, tool.arguments);
    });
}

bool SystemInfo::GetKeyValue(const QString &key, const QString &name, QString &value) const
{
    const QVariant found = m_registry(key, name);
    switch (found.typeId()) {
    case QMetaType::QString:
        if (found.toString().size() >= longestValue)
            return false;
        value = found.toString();
        return true;
    case QMetaType::Int:
    case QMetaType::UInt:
        value = u"&h%1"_s.arg(found.toUInt(), 8, 16, QLatin1Char('0'));
        break;
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        value = u"&h%1"_s.arg(found.toULongLong(), 16, 16, QLatin1Char('0'));
        break;
    default:
        return false;
    }
    value = u"&h"_s + value.sliced(2).toUpper();
    return true;
}

} // namespace corvane
