// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/SetupWindows.h"

#include "core/channels/ChannelSet.h"
#include "core/setup/GpibSearch.h"
#include "windows/about/frmAbout.h"
#include "windows/setup/GpibAboutBox.h"
#include "windows/setup/frmGPIB.h"
#include "windows/setup/frmGpibAdapters.h"
#include "windows/setup/frmPortConfig.h"

#include <QTimer>

namespace corvane {

namespace {

QStringList devices(const QList<SerialPortEntry> &ports)
{
    QStringList names;
    for (const SerialPortEntry &port : ports)
        names.append(port.device);
    return names;
}

} // namespace

SetupWindows::SetupWindows(const SetupParts &parts, QWidget &window)
    : QObject(&window)
    , tmrSearchGPIB(new QTimer(this))
    , m_parts(parts)
    , m_window(&window)
{
}

void SetupWindows::cmdPortConfig_Click(int index)
{
    if (index < 0 || index >= static_cast<int>(m_portConfig.size()))
        return;
    frmPortConfig *&form = m_portConfig.at(static_cast<size_t>(index));
    if (!form) {
        SerialSession &channel = m_parts.channels.serial(index);
        form = new frmPortConfig(index, channel.port(), m_window);
        connect(&channel, &ChannelSession::openChanged, form, &frmPortConfig::portOpened);
    }
    form->openWindow();
}

GpibSearch &SetupWindows::search()
{
    if (m_search)
        return *m_search;
    ChannelSet &channels = m_parts.channels;
    m_search =
        new GpibSearch(channels.gpib(), channels.users(), channels.module(), m_parts.clock, this);
    connect(m_search, &GpibSearch::ended, tmrSearchGPIB, &QTimer::stop);
    // The device that was found is connected as soon as the search has left the control.
    connect(m_search, &GpibSearch::found, &channels.gpib(), &ChannelSession::open,
            Qt::QueuedConnection);
    return *m_search;
}

void SetupWindows::cmdSearchGPIB_Click()
{
    if (!m_searchWindow)
        m_searchWindow =
            new frmGPIB(search(), m_parts.channels.module(), m_parts.dialogs, m_window);
    m_searchWindow->openWindow();
}

void SetupWindows::cmdAdapter_Click()
{
    SerialSession &serial = m_parts.channels.serial(channels::rs232);
    if (!m_adapterWindow)
        m_adapterWindow = new frmGpibAdapters(
            {m_parts.gpibAdapters, m_parts.channels.gpib().control(), m_parts.gpibAdapterFactory,
             m_parts.dialogs, [&serial] { return devices(serial.ports()); }},
            m_window);
    m_adapterWindow->openWindow();
}

void SetupWindows::mnuAboutSC_Click()
{
    if (!m_about) {
        m_about = new frmAbout(m_parts.systemInfo, m_window);
        connect(m_about, &frmAbout::gpibAboutRequested, this, &SetupWindows::showGpibAbout);
    }
    m_about->openWindow();
}

void SetupWindows::showGpibAbout()
{
    if (!m_gpibAbout)
        m_gpibAbout = new GpibAboutBox(m_parts.channels.gpib().control(), m_window);
    m_gpibAbout->openWindow();
}

void SetupWindows::cancel()
{
    const std::array<QDialog *, 3> asking = {m_searchWindow, m_adapterWindow, m_gpibAbout};
    for (QDialog *form : asking) {
        if (form)
            form->close();
    }
    if (m_search)
        m_search->cancel();
}

bool SetupWindows::isBusy() const
{
    return (m_search != nullptr && m_search->isRunning()) ||
           (m_adapterWindow != nullptr && m_adapterWindow->isBusy()) ||
           (m_gpibAbout != nullptr && m_gpibAbout->isBusy());
}

} // namespace corvane
