#pragma once

#include "windows/about/AboutHost.h"

#include <QObject>

#include <array>

class QTimer;

namespace corvane {

class GpibAboutBox;
class GpibSearch;
class Main;
class frmAbout;
class frmGPIB;
class frmGpibAdapters;
class frmPortConfig;

/// The main window's small windows for finding and setting up devices, and the About window. Each
/// is made when it is first asked for and kept; what they need of the main window is answered here.
class SetupWindows : public QObject, public AboutHost
{
    Q_OBJECT

public:
    explicit SetupWindows(Main &window);
    ~SetupWindows() override;

    /// The port configuration of a serial Channel, 0 or 1.
    void cmdPortConfig_Click(int index);
    void cmdSearchGPIB_Click();
    void cmdAdapter_Click();
    void mnuAboutSC_Click();
    /// Ends what runs in the windows and closes them; the program is closing.
    void cancel();
    /// True while a search or a question to an adapter is on the stack.
    [[nodiscard]] bool isBusy() const;
    /// The search; its window is made with it.
    [[nodiscard]] GpibSearch &search();

    // What the About window needs.
    void showGpibAbout() override;

    /// Kept for the search to stop: it is never started, the search paces itself.
    QTimer *tmrSearchGPIB = nullptr;

private:
    Main &m_window;
    std::array<frmPortConfig *, 2> m_portConfig{};
    GpibSearch *m_search = nullptr;
    frmGPIB *m_searchWindow = nullptr;
    frmGpibAdapters *m_adapterWindow = nullptr;
    GpibAboutBox *m_gpibAbout = nullptr;
    frmAbout *m_about = nullptr;
};

} // namespace corvane
