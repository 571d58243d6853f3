// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/WindowProgram.h"

#include "core/setup/modWinsockAPI.h"
#include "core/text/Dialogs.h"
#include "devices/FilesFolder.h"
#include "devices/PlatformError.h"
#include "windows/main/BenchWindow.h"
#include "windows/main/ChannelTab.h"
#include "windows/main/StatusLine.h"
#include "windows/widgets/ClosableWindow.h"
#include "windows/widgets/LeanStyle.h"
#include "windows/widgets/WindowPlaces.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTabWidget>
#include <QTimer>

namespace corvane {

WindowProgram::WindowProgram(const CommandLine &line, Dialogs &dialogs, QSettings *settings)
    : m_workbench(line, dialogs, GpibAdapterFactory::Reader::Window)
    , m_systemInfo(systemRegistry(), m_launcher, dialogs)
{
    QApplication::setStyle(new LeanStyle);
    WindowPlaces::install(settings);
    const QString programFolder = QCoreApplication::applicationDirPath();
    const QString folder =
        filesFolder::choose(line.folder, programFolder, filesFolder::UserFolders::ofSystem());
    m_window = std::make_unique<Main>(
        MainParts{.clock = m_workbench.clock(),
                  .dialogs = dialogs,
                  .channels = m_workbench.channels(),
                  .list = m_workbench.list(),
                  .engine = m_workbench.engine(),
                  .traffic = m_workbench.traffic(),
                  .settings = settings,
                  .programFolder = programFolder,
                  .filesFolder = folder,
                  .gpibAdapters = m_workbench.gpibAdapters(),
                  .gpibAdapterFactory = m_workbench.gpibAdapterFactory(),
                  .systemInfo = m_systemInfo,
                  .remembered = m_remembered,
                  .findLocalAddress = [this](const auto &found) {
                      m_ownAddress.start(
                          [found] { return [found, own = modWinsockAPI::find()] { found(own); }; });
                  }});
    m_window->Form_Load();
    m_workbench.pointChannelsAtBench();
    setUpChannels(line);
    if (m_workbench.desk())
        addBenchWindow();
    QObject::connect(m_window.get(), &Main::benchWanted, m_window.get(),
                     [this, &dialogs] { startBench(dialogs); });
}

WindowProgram::~WindowProgram() = default;

void WindowProgram::setUpChannels(const CommandLine &line)
{
    ChannelSet &channels = m_workbench.channels();
    for (auto setup = line.setups.begin(); setup != line.setups.end(); ++setup)
        channels.at(setup.key()).fillIn(setup.value());
    if (line.loopMs)
        channels.at(line.channel).setPeriod(*line.loopMs);
    if (line.channel >= 0)
        m_window->showChannel(line.channel);
    else if (!line.setups.isEmpty())
        m_window->showChannel(line.setups.firstKey());
}

/// Each in a turn of its own: the message box of one does not hold up the others.
void WindowProgram::connectChannels(const CommandLine &line)
{
    if (!line.connects)
        return;
    for (auto setup = line.setups.begin(); setup != line.setups.end(); ++setup)
        QTimer::singleShot(0, m_window.get(), [window = m_window.get(), channel = setup.key()] {
            window->cmdConnect_Click(channel);
        });
}

void WindowProgram::startBench(Dialogs &dialogs)
{
    try {
        m_workbench.addBench();
    } catch (const PlatformError &fault) {
        dialogs.showMessage(m_window.get(), fault.description());
        return;
    }
    addBenchWindow();
    m_window->lblFaults->setNote(StatusLine::About::Bench,
                                 u"The simulated bench has been started: press Connect"_s);
    m_benchWindow->openBeside(*m_window);
    m_window->channel(m_window->tabChannels->currentIndex())->cmdConnect->setFocus();
}

void WindowProgram::addBenchWindow()
{
    m_window->withdrawBench();
    m_benchWindow = std::make_unique<BenchWindow>(*m_workbench.desk(), m_workbench.bench());
    auto *mnuView = m_window->findChild<QMenu *>(u"mnuView"_s);
    QAction *mnuBench = mnuView->addAction(u"Simulated &Bench"_s);
    mnuBench->setObjectName(u"mnuBench"_s);
    QObject::connect(mnuBench, &QAction::triggered, m_benchWindow.get(),
                     [this] { bringToFront(*m_benchWindow); });
}

} // namespace corvane
