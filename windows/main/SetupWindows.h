// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAdapterChoice.h"

#include <QObject>

#include <array>

class QTimer;

namespace corvane {

class ChannelSet;
class Clock;
class Dialogs;
class GpibAboutBox;
class GpibAdapterFactory;
class GpibSearch;
class SystemInfo;
class frmAbout;
class frmGPIB;
class frmGpibAdapters;
class frmPortConfig;

/// What the small windows are built on; all of it outlives them.
struct SetupParts
{
    ChannelSet &channels;
    Clock &clock;
    Dialogs &dialogs;
    GpibAdapterChoices &gpibAdapters;
    const GpibAdapterFactory &gpibAdapterFactory;
    SystemInfo &systemInfo;
};

/// The small windows for finding and setting up devices, and the About window. Each is made when it
/// is first asked for and kept.
class SetupWindows : public QObject
{
    Q_OBJECT

public:
    /// They stand over `window`.
    SetupWindows(const SetupParts &parts, QWidget &window);

    /// The port configuration of a serial Channel, 0 or 1.
    void cmdPortConfig_Click(int index);
    void cmdSearchGPIB_Click();
    void cmdAdapter_Click();
    void mnuAboutSC_Click();
    /// The GPIB control's own about box.
    void showGpibAbout();
    /// Ends what runs in the windows and closes them; the program is closing.
    void cancel();
    /// True while a search or a question to an adapter is on the stack.
    [[nodiscard]] bool isBusy() const;
    /// The search; its window is made with it.
    [[nodiscard]] GpibSearch &search();

    /// Kept for the search to stop: it is never started, the search paces itself.
    QTimer *tmrSearchGPIB;

private:
    const SetupParts m_parts;
    QWidget *m_window;
    std::array<frmPortConfig *, 2> m_portConfig{};
    GpibSearch *m_search = nullptr;
    frmGPIB *m_searchWindow = nullptr;
    frmGpibAdapters *m_adapterWindow = nullptr;
    GpibAboutBox *m_gpibAbout = nullptr;
    frmAbout *m_about = nullptr;
};

} // namespace corvane
