// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Desk.h"

#include <QDir>

#include <utility>

namespace corvane::bench {

Desk::Desk(BenchOptions options)
    : m_options(std::move(options))
    , m_temporaryLinks(QDir::tempPath() + u"/corvane-bench-XXXXXX"_s)
{
}

bool Desk::start()
{
    m_errors.clear();
    m_layout = lay();
    return m_errors.isEmpty();
}

QString Desk::link(const QString &name) const
{
    const QString folder =
        m_options.linkFolder.isEmpty() ? m_temporaryLinks.path() : m_options.linkFolder;
    return folder + u'/' + name;
}

void Desk::startSerial(PtyPort &port)
{
    if (!port.replug())
        m_errors.append(u"%1: %2"_s.arg(port.path(), port.errorString()));
}

void Desk::startTcp(TcpPort &port, quint16 preferred)
{
    if (!port.listen(preferred))
        m_errors.append(u"TCP port %1: %2"_s.arg(preferred).arg(port.errorString()));
}

QString Desk::addressOf(const TcpPort &port)
{
    return u"%1:%2"_s.arg(host()).arg(port.port());
}

QStringList Desk::programArguments() const
{
    QStringList arguments;
    const auto add = [&arguments](const QString &option, const QMap<int, QString> &numbered) {
        for (auto each = numbered.begin(); each != numbered.end(); ++each)
            arguments << option << u"%1=%2"_s.arg(each.key()).arg(each.value());
    };
    add(u"--com"_s, m_layout.serialDevices);
    add(u"--gpib"_s, m_layout.gpibAdapters);
    return arguments;
}

QString Desk::Place::state() const
{
    const QString plugged = plug->state();
    return faults->fault().toString() + (plugged.isEmpty() ? QString() : u", "_s + plugged);
}

} // namespace corvane::bench
