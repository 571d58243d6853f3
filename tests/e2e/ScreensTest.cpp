#include "EndToEndDesk.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/board/frmSBC.h"
#include "windows/lists/CommandListArea.h"
#include "windows/main/BenchWindow.h"
#include "windows/main/SetupWindows.h"

using namespace corvane;

namespace {

bool isCut(const QWidget &widget)
{
    for (const QWidget *each = &widget; !each->isWindow(); each = each->parentWidget()) {
        const QWidget *parent = each->parentWidget();
        const auto *area = qobject_cast<const QAbstractScrollArea *>(parent->parentWidget());
        if (area && area->viewport() == parent)
            return false; // it scrolls as far as its content goes
        if (!parent->rect().contains(each->geometry()))
            return true;
    }
    return false;
}

/// How much room a control needs so that its text can be read.
QSize needed(const QWidget &control)
{
    if (const auto *label = qobject_cast<const QLabel *>(&control)) {
        const bool isOwnWidth = label->sizePolicy().horizontalPolicy() != QSizePolicy::Ignored;
        const QSize text =
            label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
        return {isOwnWidth ? text.width() : 0, text.height()};
    }
    if (const auto *button = qobject_cast<const QPushButton *>(&control)) {
        const QFontMetrics metrics = button->fontMetrics();
        return metrics.size(Qt::TextShowMnemonic, button->text()) + QSize(8, 4);
    }
    return qobject_cast<const QAbstractButton *>(&control) ? control.minimumSizeHint() : QSize();
}

/// The controls of a window's showing page that are cut, "|" between them.
QString cutControls(const QWidget &window)
{
    QStringList cut;
    for (const QWidget *each : window.findChildren<QWidget *>()) {
        const bool isOurs = !each->objectName().isEmpty() &&
                            !each->objectName().startsWith(u"qt_") &&
                            !each->objectName().startsWith(u"Scroll");
        if (!each->isVisible() || each->window() != &window ||
            !(isOurs || qobject_cast<const QLabel *>(each)))
            continue;
        const QSize need = needed(*each);
        if (isCut(*each) || each->width() < need.width() || each->height() < need.height())
            cut.append(u"%1 %2 (%3x%4 of %5x%6)"_s
                           .arg(QLatin1String(each->metaObject()->className()), each->objectName())
                           .arg(each->width())
                           .arg(each->height())
                           .arg(need.width())
                           .arg(need.height()));
    }
    return cut.join(u'|');
}

struct Screens : EndToEndDesk
{
    void openAll()
    {
        main.show();
        main.mnuSBC->trigger();
        top(u"frmSBC"_s).findChild<QPushButton *>(u"cmdReport"_s)->click();
        main.setupWindows().cmdPortConfig_Click(0);
        main.setupWindows().cmdPortConfig_Click(1);
        main.setupWindows().cmdAdapter_Click();
        main.setupWindows().mnuAboutSC_Click();
        main.setupWindows().showGpibAbout();
        main.setupWindows().cmdSearchGPIB_Click();
        main.mnuTraffic_Click();
        main.mnuTrend_Click();
        main.mnuHelp_Click();
        main.commandList->cmdEditList->click();
        program.benchWindow()->show();
    }
    static QWidget &top(const QString &name)
    {
        for (QWidget *each : QApplication::topLevelWidgets())
            if (each->objectName() == name)
                return *each;
        ADD_FAILURE() << name.toStdString();
        std::abort();
    }
};

} // namespace

TEST(ScreensTest, NoControlIsCutOnAnyScreenWithAnyFont)
{
    const QFont before = QApplication::font();
    struct
    {
        int points;
        QSize room;
    } table[] = {{9, {1024, 660}},  {9, {960, 500}},  {12, {1024, 720}},
                 {16, {1366, 720}}, {16, {512, 320}}, {9, {3840, 2120}}};
    for (const auto &[points, room] : table) {
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        Screens desk;
        desk.openAll();
        QTest::qWait(200);
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (!window->isVisible() || window->objectName().isEmpty())
                continue;
            const QSize asked = window->size();
            window->resize(asked.boundedTo(room));
            QTest::qWait(10);
            if (window->width() > room.width() || window->height() > room.height())
                ADD_FAILURE() << points << " " << window->objectName().toStdString() << " is "
                              << window->width() << "x" << window->height() << " on "
                              << room.width() << "x" << room.height();
            auto pages = window->findChild<QTabWidget *>();
            for (int page = 0; page < (pages ? pages->count() : 1); ++page) {
                if (pages)
                    pages->setCurrentIndex(page);
                QTest::qWait(1);
                const QString cut = cutControls(*window);
                EXPECT_EQ(cut.toStdString(), "")
                    << points << " " << room.width() << " " << window->objectName().toStdString()
                    << " page " << page;
            }
        }
        desk.main.close();
    }
    QApplication::setFont(before);
}
