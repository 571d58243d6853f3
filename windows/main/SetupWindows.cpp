#include "windows/main/SetupWindows.h"

#include "core/setup/GpibSearch.h"
#include "windows/about/frmAbout.h"
#include "windows/main/GpibTab.h"
#include "windows/main/Main.h"
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

SetupWindows::SetupWindows(Main &window)
    : QObject(&window)
    , tmrSearchGPIB(new QTimer(this))
    , m_window(window)
{
}

SetupWindows::~SetupWindows() = default;

void SetupWindows::cmdPortConfig_Click(int index)
{
    if (index < 0 || index >= static_cast<int>(m_portConfig.size()))
        return;
    frmPortConfig *&form = m_portConfig.at(static_cast<size_t>(index));
    if (!form) {
        SerialSession &channel = m_window.parts().channels.serial(index);
        form = new frmPortConfig(index, channel.port(), &m_window);
        connect(&channel, &ChannelSession::openChanged, form, &frmPortConfig::portOpened);
    }
    form->openWindow();
}

GpibSearch &SetupWindows::search()
{
    if (m_search)
        return *m_search;
    ChannelSet &channels = m_window.parts().channels;
    m_search = new GpibSearch(channels.gpib(), channels.users(), channels.module(),
                              m_window.parts().clock, this);
    connect(m_search, &GpibSearch::ended, tmrSearchGPIB, &QTimer::stop);
    // The device that was found is connected as soon as the search has left the control.
    connect(m_search, &GpibSearch::found, &channels.gpib(), &ChannelSession::open,
            Qt::QueuedConnection);
    return *m_search;
}

void SetupWindows::cmdSearchGPIB_Click()
{
    m_window.gpibTab().applyPendingEntries();
    if (!m_searchWindow)
        m_searchWindow = new frmGPIB(search(), m_window.parts().channels.module(),
                                     m_window.parts().dialogs, &m_window);
    m_searchWindow->openWindow();
}

void SetupWindows::cmdAdapter_Click()
{
    const MainParts &parts = m_window.parts();
    if (!m_adapterWindow)
        m_adapterWindow = new frmGpibAdapters(
            {parts.gpibAdapters, parts.channels.gpib().control(), parts.gpibAdapterFactory,
             parts.dialogs,
             [this] { return devices(m_window.parts().channels.serial(channels::rs232).ports()); }},
            &m_window);
    m_adapterWindow->openWindow();
}

void SetupWindows::mnuAboutSC_Click()
{
    if (!m_about)
        m_about = new frmAbout(m_window.parts().systemInfo, *this, &m_window);
    m_about->openWindow();
}

void SetupWindows::showGpibAbout()
{
    if (!m_gpibAbout)
        m_gpibAbout = new GpibAboutBox(m_window.parts().channels.gpib().control(), &m_window);
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
           (m_adapterWindow != nullptr && m_adapterWindow->isTesting()) ||
           (m_gpibAbout != nullptr && m_gpibAbout->isAsking());
}

} // namespace corvane
