#include "app/window/WindowProgram.h"

#include "core/setup/modWinsockAPI.h"
#include "devices/FilesFolder.h"
#include "windows/main/BenchWindow.h"
#include "windows/widgets/ClosableWindow.h"
#include "windows/widgets/LeanStyle.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

namespace corvane {

WindowProgram::WindowProgram(const CommandLine &line, Dialogs &dialogs)
    : m_workbench(line, dialogs, GpibAdapterFactory::Reader::Window)
    , m_systemInfo(systemRegistry(), m_launcher, dialogs)
{
    QApplication::setStyle(new LeanStyle);
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
    if (m_workbench.desk())
        addBenchWindow();
}

WindowProgram::~WindowProgram() = default;

void WindowProgram::addBenchWindow()
{
    m_benchWindow = std::make_unique<BenchWindow>(*m_workbench.desk(), m_workbench.bench());
    auto *mnuView = m_window->findChild<QMenu *>(u"mnuView"_s);
    QAction *mnuBench = mnuView->addAction(u"Simulated &Bench"_s);
    mnuBench->setObjectName(u"mnuBench"_s);
    QObject::connect(mnuBench, &QAction::triggered, m_benchWindow.get(),
                     [this] { bringToFront(*m_benchWindow); });
}

} // namespace corvane
