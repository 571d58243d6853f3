#include "windows/about/SystemInfo.h"

#include "core/text/Dialogs.h"
#include "windows/about/AboutTexts.h"
#include "windows/about/ProgramLauncher.h"

#include <array>
#include <ranges>

namespace corvane {

namespace {

constexpr std::size_t longestValue = 1024;

struct Tool
{
    const char16_t *name;
    const char16_t *page; ///< the tool's argument, or null
};

/// Where no registry names a tool: those that are known to show the computer, the most telling
/// first.
constexpr std::array knownTools{
    Tool{u"hardinfo2", nullptr},
    Tool{u"hardinfo", nullptr},
    Tool{u"kinfocenter", nullptr},
    Tool{u"gnome-control-center", u"info-overview"},
};

QString textOf(const std::vector<std::uint8_t> &bytes)
{
    QString text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += QChar(static_cast<ushort>(bytes[i] | bytes[i + 1] << 8));
    if (text.endsWith(QChar(0)))
        text.chop(1);
    return text;
}

QString hexOf(const std::vector<std::uint8_t> &bytes)
{
    QString text = QStringLiteral("&h");
    for (const std::uint8_t byte : bytes | std::views::reverse)
        text += QStringLiteral("%1").arg(byte, 2, 16, QLatin1Char('0')).toUpper();
    return text;
}

} // namespace

SystemInfo::SystemInfo(RegistryApi &registry, ProgramLauncher &launcher, Dialogs &dialogs)
    : m_registry(registry)
    , m_launcher(launcher)
    , m_dialogs(dialogs)
{
}

void SystemInfo::StartSysInfo(QObject *asker)
{
    if (!startRegistered() && !startInstalled())
        m_dialogs.showMessage(asker, QString::fromUtf16(aboutTexts::noSystemInfo));
}

bool SystemInfo::startRegistered()
{
    using enum RegistryApi::Root;
    QString program;
    if (GetKeyValue(LocalMachine, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"),
                    QStringLiteral("PATH"), program))
        return m_launcher.start(program, {});
    QString folder;
    if (!GetKeyValue(LocalMachine, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"),
                     QStringLiteral("MSINFO"), folder))
        return false;
    program = folder + QStringLiteral("\\MSINFO32.EXE");
    return m_launcher.fileExists(program) && m_launcher.start(program, {});
}

bool SystemInfo::startInstalled()
{
    for (const Tool &tool : knownTools) {
        const QString program = m_launcher.findProgram(QString::fromUtf16(tool.name));
        QStringList arguments;
        if (tool.page)
            arguments.append(QString::fromUtf16(tool.page));
        if (!program.isEmpty() && m_launcher.start(program, arguments))
            return true;
    }
    return false;
}

bool SystemInfo::GetKeyValue(RegistryApi::Root root, const QString &key, const QString &name,
                             QString &value)
{
    const auto opened = m_registry.openKey(root, key.toStdU16String());
    if (!opened)
        return false;
    const auto found = m_registry.queryValue(*opened, name.toStdU16String(), longestValue);
    if (found)
        value = found->type == RegistryApi::stringType ? textOf(found->bytes) : hexOf(found->bytes);
    m_registry.closeKey(*opened);
    return found.has_value();
}

} // namespace corvane
