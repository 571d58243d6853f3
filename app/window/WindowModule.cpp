#include "app/WindowModule.h"

#include "app/Display.h"
#include "app/ToolkitWatch.h"
#include "app/window/WindowProgram.h"
#include "devices/StopSignal.h"
#include "windows/main/BenchWindow.h"
#include "windows/widgets/QtDialogs.h"

#include <QApplication>
#include <QTimer>

using namespace corvane;

namespace {

constexpr int toolkitFailed = 2;

int showWindow(const CommandLine &line)
{
    QtDialogs dialogs;
    WindowProgram program(line, dialogs);
    Main &window = program.window();
    dialogs.setHome(&window);
    const StopSignal stop([&window] { window.close(); });
    QObject::connect(&window, &Main::closed, qApp, &QCoreApplication::quit);
    window.show();
    // For the window manager: the first paint does not wait for the picture.
    QTimer::singleShot(0, &window, [&program] {
        QApplication::setWindowIcon(QPixmap(u":/corvane.png"_s));
        if (program.benchWindow())
            program.benchWindow()->openBeside(program.window());
    });
    if (!line.list.isEmpty())
        program.workbench().list().OpenFile(line.list);
    return QApplication::exec();
}

} // namespace

extern "C" Q_DECL_EXPORT int corvaneWindow(const CommandLine &line, int &argc, char **argv)
{
    const ToolkitWatch watch(display::fault(), toolkitFailed);
    const QApplication application(argc, argv);
    ToolkitWatch::started();
    QApplication::setQuitOnLastWindowClosed(false);
    return showWindow(line);
}
