// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WindowModule.h"

#include "app/Display.h"
#include "app/Recording.h"
#include "app/ToolkitWatch.h"
#include "app/window/WindowProgram.h"
#include "core/text/ProductInfo.h"
#include "devices/StopSignal.h"
#include "windows/main/BenchWindow.h"
#include "windows/widgets/QtDialogs.h"

#include <QApplication>
#include <QSettings>
#include <QTextStream>
#include <QTimer>

using namespace corvane;

namespace {

constexpr int failed = 2;

int showWindow(const CommandLine &line)
{
    const QString name = QString::fromUtf16(productInfo::title);
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, name, name);
    QtDialogs dialogs;
    if (line.folder.isEmpty()) // that one is wanted, not the last
        dialogs.rememberFoldersIn(settings);
    WindowProgram program(line, dialogs, &settings);
    Main &window = program.window();
    dialogs.setHome(&window);
    dialogs.setFirstFolder(window.parts().filesFolder);
    QTextStream out(stdout);
    QTextStream messages(stderr);
    const auto recording = startRecording(line, program.workbench().traffic(), out, messages);
    if (recording)
        QObject::connect(recording.get(), &TrafficWriter::failed, &window,
                         &Main::showRecordingFault);
    const StopSignal stop([&window] { window.close(); });
    QObject::connect(&window, &Main::closed, qApp, &QCoreApplication::quit);
    window.show();
    // For the window manager: the first paint does not wait for the picture.
    QTimer::singleShot(0, &window, [&program] {
        QApplication::setWindowIcon(QPixmap(u":/corvane.png"_s));
        if (program.benchWindow())
            program.benchWindow()->openBeside(program.window());
    });
    const CommandList &list = program.workbench().list();
    QObject::connect(&list, &CommandList::named, &window, [&](const QString &file) {
        if (!file.isEmpty())
            dialogs.noteFolder(&window, list.ListFilePath);
    });
    program.connectChannels(line);
    if (!line.list.isEmpty())
        program.workbench().list().OpenFile(line.list);
    const int exitCode = QApplication::exec();
    return finishRecording(recording.get()) ? exitCode : failed;
}

} // namespace

extern "C" Q_DECL_EXPORT int corvaneWindow(const CommandLine &line, int &argc, char **argv)
{
    const ToolkitWatch watch(display::fault(), failed);
    const QApplication application(argc, argv);
    ToolkitWatch::started();
    QApplication::setQuitOnLastWindowClosed(false);
    return showWindow(line);
}
