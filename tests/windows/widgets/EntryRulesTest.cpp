// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/EntryRules.h"

#include "tests/support/Testing.h"
#include "windows/widgets/EditableBox.h"
#include "windows/widgets/LeanStyle.h"
#include "windows/widgets/OneLine.h"

using namespace corvane;

namespace {

/// A page with boxes on it that records what it is scrolled by.
struct Page : QWidget
{
    Page()
    {
        EntryRules::install();
        auto *rows = new QVBoxLayout(this);
        for (QWidget *each : std::initializer_list<QWidget *>{&other, &box, &list, &spin})
            rows->addWidget(each);
        for (QComboBox *each : std::initializer_list<QComboBox *>{&box, &list})
            each->addItems({u"1"_s, u"2"_s, u"3"_s});
        show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this, 30000));
        other.setFocus();
    }
    void wheelEvent(QWheelEvent *) override { ++scrolls; }

    QLineEdit other;
    EditableBox box;
    QComboBox list;
    QSpinBox spin;
    int scrolls = 0;
};

/// One notch towards the user, as the window system hands it on.
void turnWheelOver(QWidget &widget)
{
    const QPointF place = widget.rect().center();
    QWheelEvent event(place, widget.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    QCoreApplication::instance()->notify(&widget, &event);
}

QString state(const Page &page)
{
    return page.box.currentText() + page.list.currentText() + page.spin.text();
}

} // namespace

TEST(EntryRules, TheWheelTurnsABoxOnlyWhileItHasTheFocus)
{
    Page page;
    for (QWidget *over :
         std::initializer_list<QWidget *>{&page.box, page.box.lineEdit(), &page.list, &page.spin})
        turnWheelOver(*over);
    EXPECT_EQ(state(page), u"110");
    EXPECT_EQ(page.scrolls, 4) << "the page is scrolled instead";
    EXPECT_TRUE(page.other.hasFocus());
    page.spin.setValue(1);
    for (QWidget *each : std::initializer_list<QWidget *>{&page.box, &page.list, &page.spin}) {
        each->setFocus();
        turnWheelOver(*each);
    }
    EXPECT_EQ(state(page), u"220");
}

TEST(EntryRules, ALineEndNeverStaysInAnEntryHoweverItComesIn)
{
    Page page;
    const std::tuple<const char16_t *, int, const char16_t *, int> rows[] = {
        {u"*IDN?\r\n", 7, u"*IDN?", 5},    {u"\nA\r\n\n B\n", 8, u"A  B", 4},
        {u"XA\nB\nY", 5, u"XA BY", 4}, // pasted between X and Y
        {u"A\u2028B\u2029", 4, u"A B", 3}, {u"A\u0085B\tC\x0b", 6, u"A\u0085B\tC\x0b", 6},
    };
    for (const auto &[given, before, expected, after] : rows) {
        QString text = QString::fromUtf16(given);
        int cursor = before;
        oneLine::clean(text, cursor);
        EXPECT_EQ(text, expected);
        EXPECT_EQ(cursor, after);
    }
    const QString pasted = u"A\nB\r\n"_s;
    for (QLineEdit *entry : {&page.other, page.box.lineEdit()}) {
        const std::function<void()> ways[] = {
            [&] { entry->setText(pasted); },
            [&] {
                QApplication::clipboard()->setText(pasted);
                entry->paste();
            },
            [&] {
                QInputMethodEvent event;
                event.setCommitString(pasted);
                QCoreApplication::sendEvent(entry, &event);
            },
            [&] {
                QMimeData data;
                data.setText(pasted);
                QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &data, Qt::LeftButton, {});
                QCoreApplication::sendEvent(entry, &enter);
                QDropEvent event(QPointF(1, 1), Qt::CopyAction, &data, Qt::LeftButton, {});
                QCoreApplication::sendEvent(entry, &event);
            },
        };
        for (const auto &comesIn : ways) {
            entry->clear();
            comesIn();
            EXPECT_EQ(entry->text(), u"A B");
        }
    }
    page.box.addItem(pasted);
    page.box.setCurrentIndex(page.box.count() - 1);
    EXPECT_EQ(page.box.currentText(), u"A B");
}

TEST(EntryRules, TheHintInAnEmptyEntryCanBeReadOnADarkDesktop)
{
    QPalette theme(Qt::white, Qt::black, Qt::black, Qt::black, Qt::black, Qt::white, Qt::black);
    theme.setColor(QPalette::PlaceholderText, Qt::black); // as some of them leave it
    LeanStyle().polish(theme);
    EXPECT_EQ(theme.placeholderText().color().rgb(), QColor(Qt::white).rgb());
}

TEST(EditableBox, KeepsATextThatDiffersFromAnItemInCaseOnly)
{
    Page page;
    page.box.addItem(u"*IDN?"_s);
    page.box.setFocus();
    page.box.clearEditText();
    QTest::keyClicks(&page.box, u"*idn?"_s);
    page.other.setFocus();
    EXPECT_EQ(page.box.currentText(), u"*idn?");
}
