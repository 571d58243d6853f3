// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Workbench.h"
#include "core/board/modSBC.h"
#include "devices/DetachedCall.h"
#include "windows/about/ProgramLauncher.h"
#include "windows/about/SystemInfo.h"
#include "windows/main/Main.h"

class QSettings;

namespace corvane {

class BenchWindow;

/// The program with its windows: the main window over a workbench and, for a demonstration, the
/// bench's window. It needs a QApplication.
class WindowProgram
{
public:
    /// `dialogs` and the settings must outlive the program; without settings nothing of an earlier
    /// session is known, and nothing is kept. Throws PlatformError as Workbench does.
    WindowProgram(const CommandLine &line, Dialogs &dialogs, QSettings *settings = nullptr);
    ~WindowProgram();

    /// Connects the Channels that the command line sets up, where it says so. For when the window
    /// is shown: each says by itself why it cannot.
    void connectChannels(const CommandLine &line);

    [[nodiscard]] Workbench &workbench() { return m_workbench; }
    [[nodiscard]] Main &window() { return *m_window; }
    /// Null without a bench.
    [[nodiscard]] BenchWindow *benchWindow() { return m_benchWindow.get(); }

private:
    void startBench(Dialogs &dialogs);
    void addBenchWindow();
    void setUpChannels(const CommandLine &line);

    Workbench m_workbench;
    modSBC m_remembered;
    QtProgramLauncher m_launcher;
    SystemInfo m_systemInfo;
    std::unique_ptr<Main> m_window;
    DetachedCall m_ownAddress;
    std::unique_ptr<BenchWindow> m_benchWindow;
};

} // namespace corvane
