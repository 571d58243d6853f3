// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for the look and the keys of every window, tried on all of them.
#include "tests/e2e/EndToEndDesk.h"
#include "windows/lists/CommandListArea.h"
#include "windows/lists/frmList.h"
#include "windows/main/BenchWindow.h"
#include "windows/main/GuideWindow.h"
#include "windows/main/HelpChapters.h"
#include "windows/main/SetupWindows.h"
#include "windows/widgets/ScrollPage.h"

using namespace corvane;

namespace {

/// The page of a scrolling area that the widget is; null for any other.
const QAbstractScrollArea *areaOf(const QWidget &page)
{
    const auto *area = qobject_cast<const QAbstractScrollArea *>(page.parentWidget());
    return area && area->viewport() == &page ? area : nullptr;
}

/// Something lies outside what holds it, and nothing that scrolls brings it into sight.
bool isCut(const QWidget &widget)
{
    for (const QWidget *each = &widget; !each->isWindow(); each = each->parentWidget()) {
        const QWidget *parent = each->parentWidget();
        if (areaOf(*parent))
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
        constexpr QSize frame(8, 4);
        return button->fontMetrics().size(Qt::TextShowMnemonic, button->text()) + frame;
    }
    return qobject_cast<const QAbstractButton *>(&control) ? control.minimumSizeHint() : QSize();
}

/// The controls of a window's showing page that are cut or too small, with their sizes.
std::string cutControls(const QWidget &window)
{
    QStringList cut;
    for (const QWidget *each : window.findChildren<QWidget *>()) {
        const QString name = each->objectName();
        const bool isToolkits = name.startsWith(u"qt_") || name.startsWith(u"Scroll");
        if (!each->isVisible() || each->window() != &window || isToolkits)
            continue;
        const QSize need = needed(*each);
        if (isCut(*each) || each->width() < need.width() || each->height() < need.height())
            cut.append(
                u"%1 is %2x%3 of %4x%5"_s
                    .arg(name.isEmpty() ? QLatin1String(each->metaObject()->className()) : name)
                    .arg(each->width())
                    .arg(each->height())
                    .arg(need.width())
                    .arg(need.height()));
    }
    return cut.join(u", ").toStdString();
}

/// What of a window's showing page answers to a letter that something else has too, and buttons
/// without a letter, a key or a place in a row of equal ones.
std::string clashes(const QWidget &window)
{
    QMap<QString, QSet<QString>> users;
    QStringList without;
    const auto note = [&users](const QString &text) {
        const QKeySequence letter = QKeySequence::mnemonic(text);
        if (!letter.isEmpty())
            users[letter.toString()].insert(text);
        return !letter.isEmpty();
    };
    for (const QMenuBar *bar : window.findChildren<QMenuBar *>()) {
        for (const QAction *menu : bar->actions())
            note(menu->text());
    }
    for (const QWidget *each : window.findChildren<QWidget *>()) {
        if (!each->isVisible() || each->window() != &window)
            continue;
        if (const auto *label = qobject_cast<const QLabel *>(each); label && label->buddy())
            note(label->text());
        const auto *button = qobject_cast<const QAbstractButton *>(each);
        const bool isPushed = qobject_cast<const QPushButton *>(each) != nullptr;
        if (button != nullptr && !note(button->text()) && isPushed &&
            !button->toolTip().contains(u'('))
            without.append(u"no key: "_s + button->text());
    }
    QStringList wrong(without);
    for (auto user = users.begin(); user != users.end(); ++user) {
        if (user.value().size() > 1)
            wrong.append(user.key() + u": "_s + QStringList(user.value().values()).join(u", "));
    }
    return wrong.join(u"; ").toStdString();
}

/// The program with all of its windows open.
struct OpenWindows : EndToEndDesk
{
    OpenWindows()
    {
        main.show();
        main.mnuSBC->trigger();
        window(u"frmSBC"_s)->findChild<QPushButton *>(u"cmdReport"_s)->click();
        SetupWindows &setup = main.setupWindows();
        for (const int channel : {channels::rs485, channels::rs232})
            setup.cmdPortConfig_Click(channel);
        setup.cmdAdapter_Click();
        setup.mnuAboutSC_Click();
        setup.showGpibAbout();
        setup.cmdSearchGPIB_Click();
        main.mnuTraffic_Click();
        main.mnuTrend_Click();
        main.mnuHelp_Click();
        main.commandList->cmdEditList->click();
        program.benchWindow()->show();
        waitFor([] { return windows().size() >= leastWindows; });
    }
    static QList<QWidget *> windows()
    {
        QList<QWidget *> shown = QApplication::topLevelWidgets();
        shown.removeIf(
            [](const QWidget *each) { return !each->isVisible() || each->objectName().isEmpty(); });
        return shown;
    }
    static QWidget *window(const QString &name)
    {
        const QList<QWidget *> all = windows();
        return *std::ranges::find(all, name, &QObject::objectName);
    }
    /// Does something for each page of each window.
    static void
    forEachPage(const std::function<void(QWidget &window, const std::string &name)> &act)
    {
        for (QWidget *window : windows()) {
            auto *pages = window->findChild<QTabWidget *>();
            for (int page = 0; page < (pages ? pages->count() : 1); ++page) {
                if (pages)
                    pages->setCurrentIndex(page);
                QCoreApplication::processEvents();
                act(*window, u"%1 %2"_s.arg(window->objectName()).arg(page).toStdString());
            }
        }
    }

    static constexpr int leastWindows = 12;
};

} // namespace

TEST(Windows, NoControlIsCutOnAnyScreenWithAnyFont)
{
    const QFont before = QApplication::font();
    const struct
    {
        int points;
        QSize room; ///< what a frame and a panel leave of the screen, in the window's pixels
    } table[] = {
        {9, {1018, 660}},  {9, {954, 500}}, // 1024x700; 1920x1080 at 200 %
        {12, {1018, 700}}, {16, {1360, 700}}, {16, {506, 320}}, {9, {3834, 2120}},
    };
    for (const auto &[points, room] : table) {
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        OpenWindows desk;
        ASSERT_GE(OpenWindows::windows().size(), OpenWindows::leastWindows);
        OpenWindows::forEachPage([&, points = points, room = room](QWidget &window,
                                                                   const std::string &name) {
            window.resize(window.size().boundedTo(room));
            QCoreApplication::processEvents();
            EXPECT_EQ(window.size().boundedTo(room), window.size()) << name << " at " << points;
            // A text may just have come, and its layout not yet.
            (void)QTest::qWaitFor([&] { return cutControls(window).empty(); }, 2000);
            EXPECT_EQ(cutControls(window), "") << name << " at " << points << " " << room.width();
        });
    }
    QApplication::setFont(before);
}

TEST(Windows, ADialogOpensAsLargeAsItsContent)
{
    OpenWindows desk;
    int dialogs = 0;
    for (QWidget *window : OpenWindows::windows()) {
        const auto *page = window->findChild<ScrollPage *>();
        if (!qobject_cast<QDialog *>(window) || !page)
            continue;
        ++dialogs;
        const auto isWhole = [page] {
            return page->verticalScrollBar()->maximum() == 0 &&
                   page->horizontalScrollBar()->maximum() == 0;
        };
        EXPECT_TRUE(QTest::qWaitFor(isWhole))
            << window->objectName().toStdString() << " is " << window->height() << " high";
    }
    EXPECT_GE(dialogs, 6);
}

TEST(Windows, EveryButtonHasAKeyOfItsOwn)
{
    OpenWindows desk;
    OpenWindows::forEachPage([](const QWidget &window, const std::string &name) {
        EXPECT_EQ(clashes(window), "") << name;
    });
}

TEST(Windows, EachHasItsChapterInTheGuide)
{
    OpenWindows desk;
    auto *guide = static_cast<GuideWindow *>(OpenWindows::window(u"GuideWindow"_s));
    OpenWindows::forEachPage([guide](const QWidget &window, const std::string &name) {
        if (&window == guide || window.objectName() == u"frmAbout")
            return;
        const QString chapter = helpChapterOf(window);
        guide->lstOutline->setCurrentRow(0);
        guide->showChapter(chapter);
        EXPECT_EQ(guide->lstOutline->currentItem()->text().trimmed(), chapter) << name;
    });

    guide->txtFind->setText(u"no such word"_s);
    guide->findNext();
    EXPECT_EQ(guide->lblFound->text(), u"\"no such word\" is not in the guide");
    guide->txtFind->setText(u"Corvane user's guide"_s);
    for (const auto &[backwards, said] :
         {std::pair(false, u"from the top again"_s), std::pair(true, u"from the end again"_s)}) {
        if (backwards)
            guide->findPrevious();
        else
            guide->findNext();
        EXPECT_EQ(guide->lblFound->text(), said);
    }
}

TEST(Windows, EachIsClosedByItsKeyAndTheMainWindowIsGoneThroughAsItIsRead)
{
    OpenWindows desk;
    auto *editor = qobject_cast<frmList *>(OpenWindows::window(u"frmList"_s));
    editor->txtList->document()->setModified(true);
    QTest::keyClick(editor, Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(editor->isVisible()) << "it has asked first";
    editor->txtList->document()->setModified(false);
    const QList<QWidget *> open = OpenWindows::windows();
    for (const QPointer<QWidget> &window : QList<QPointer<QWidget>>(open.begin(), open.end())) {
        if (!window || !window->isVisible())
            continue; // with the one that it belongs to
        const std::string name = window->objectName().toStdString();
        QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
        if (window == &desk.main)
            EXPECT_TRUE(window->isVisible());
        else
            EXPECT_TRUE(QTest::qWaitFor([&] { return !window || !window->isVisible(); })) << name;
    }
    desk.main.activateWindow();
    const QWidget *const expected[] = {desk.main.tabChannels, desk.main.channel(0)->cmdConnect,
                                       desk.main.commandList->cmdLoad,
                                       desk.main.commandList->cmdStopSend};
    EXPECT_TRUE(QTest::qWaitForWindowActive(&desk.main));
    for (const int index : {channels::tcpIp1, channels::rs485}) {
        QTest::keyClick(&desk.main, Qt::Key(Qt::Key_1 + index), Qt::ControlModifier);
        EXPECT_EQ(desk.main.focusWidget(), desk.main.channel(index)->cboOut);
    }
    QList<const QWidget *> order;
    for (const QWidget *next = desk.main.nextInFocusChain(); next != &desk.main;
         next = next->nextInFocusChain())
        order.append(next);
    for (size_t place = 1; place < std::size(expected); ++place)
        EXPECT_LT(order.indexOf(expected[place - 1]), order.indexOf(expected[place])) << place;
}
