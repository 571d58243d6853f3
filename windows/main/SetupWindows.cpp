#include "windows/main/SetupWindows.h"

#include "core/setup/GpibSearch.h"
#include "devices/GpibControl.h"
#include "windows/about/frmAbout.h"
#include "windows/lists/TransferEngine.h"
#include "windows/main/BoardWindows.h"
#include "windows/main/GpibChannel.h"
#include "windows/main/Main.h"
#include "windows/main/SerialChannel.h"
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
        const SerialChannel &channel = m_window.serialChannel(index);
        form = new frmPortConfig(index, channel.port(), &m_window);
        connect(&channel, &Channel::openChanged, form, &frmPortConfig::portOpened);
    }
    form->openWindow();
}

GpibSearch &SetupWindows::search()
{
    if (!m_search)
        m_search = new GpibSearch(*this, m_window.parts().module, m_window.parts().clock, this);
    return *m_search;
}

void SetupWindows::cmdSearchGPIB_Click()
{
    m_window.gpibChannel().applyPendingEntries();
    if (!m_searchWindow)
        m_searchWindow =
            new frmGPIB(search(), m_window.parts().module, m_window.parts().dialogs, &m_window);
    m_searchWindow->openWindow();
}

void SetupWindows::cmdAdapter_Click()
{
    const MainParts &parts = m_window.parts();
    if (!m_adapterWindow)
        m_adapterWindow = new frmGpibAdapters(
            {parts.gpibAdapters, parts.gpib, parts.gpibAdapterFactory, parts.dialogs,
             [this] { return devices(m_window.parts().serialPorts()); }},
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
        m_gpibAbout = new GpibAboutBox(m_window.parts().gpib, &m_window);
    m_gpibAbout->openWindow();
}

QString SetupWindows::searchRefusal() const
{
    return m_search && m_search->isRunning()
               ? tr("The GPIB address search is running.  Please wait for its end or cancel it.")
               : QString();
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

GpibControl &SetupWindows::QBXControl1()
{
    return m_window.parts().gpib;
}

GpibSearchHost::OtherUse SetupWindows::otherGpibUse() const
{
    const GpibChannel &channel = m_window.gpibChannel();
    if (m_window.transferEngine().runningChannel() == channels::ieee488)
        return OtherUse::ListRun;
    if (channel.chkLoop->isChecked())
        return OtherUse::Loop;
    if (channel.isReadPending())
        return OtherUse::PendingRead;
    if (m_window.boardWindows().usesChannel(channels::ieee488))
        return OtherUse::BoardExchange;
    return OtherUse::None;
}

void SetupWindows::stopSearchTimer()
{
    tmrSearchGPIB->stop();
}

/// The device that was found is connected as soon as the search has left the control.
void SetupWindows::setGpibResponse(const QString &text)
{
    m_window.gpibChannel().txtIn->setText(text);
    QMetaObject::invokeMethod(
        this, [this] { m_window.cmdConnect_Click(channels::ieee488); }, Qt::QueuedConnection);
}

/// No reply stands under an address that it did not come from.
void SetupWindows::setGpibAddress(const QString &board, const QString &address)
{
    m_window.gpibChannel().txtIn->setBytes({});
    m_window.noteReply(channels::ieee488, {});
    m_window.gpibChannel().showAddress(board, address);
}

} // namespace corvane
