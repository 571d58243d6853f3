// SPDX-License-Identifier: GPL-3.0-or-later
// How the command-list area looks: its controls, their names and places.
#include "core/lists/CommandList.h"
#include "windows/lists/CommandListArea.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/ElidedLabel.h"
#include "windows/widgets/OneLine.h"
#include "windows/widgets/ScrollPage.h"
#include "windows/widgets/TextGrid.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QSplitter>

#include <algorithm>
#include <limits>

namespace corvane {

using namespace controls;

namespace {

/// The letters that the Channels' pages leave free are few, so most buttons have a shortcut.
struct ButtonRow
{
    QPushButton *CommandListArea::*member;
    const char *name;
    const char *caption;
    const char *purpose;
    const char *shortcut;
};

constexpr ButtonRow buttonRows[] = {
    {&CommandListArea::cmdLoad, "cmdLoad", "L&oad...", "Load a command list file", "Ctrl+O"},
    {&CommandListArea::cmdSave, "cmdSave", "Save...", "Save the chamber settings to a file",
     "Ctrl+S"},
    {&CommandListArea::cmdEditList, "cmdEditList", "Edit List...", "Edit the list as text",
     "Ctrl+E"},
    {&CommandListArea::cmdSaveList, "cmdSaveList", "Save List...", "Save the list as text",
     "Ctrl+Shift+S"},
    {&CommandListArea::cmdSaveResults, "cmdSaveResults", "Save Results...",
     "Save the results of the last run as a table or a JUnit report", "Ctrl+R"},
    {&CommandListArea::cmdAddRow, "cmdAddRow", "Add Row", "Add a row at the end of the list",
     "Ctrl+Ins"},
    {&CommandListArea::cmdDeleteRow, "cmdDeleteRow", "Delete Ro&w", "Delete the current row",
     "Ctrl+Del"},
    {&CommandListArea::cmdClearCol, "cmdClearCol", "Clear Column", "Empty the current column",
     "Ctrl+Shift+Del"},
    {&CommandListArea::cmdClear, "cmdClear", "Clear List", "Clear the whole list", "Ctrl+Shift+N"},
    {&CommandListArea::cmdMaxGrid, "cmdMaxGrid", "Ma&x Grid", "Widen the grid over the comments",
     "F11"},
    {&CommandListArea::cmdMinGrid, "cmdMinGrid", "Min Grid", "Show the comments again",
     "Shift+F11"},
    {&CommandListArea::cmdGetList, "cmdGetList", "Get List",
     "Fill the list with the values of the device on the showing channel", "F6"},
    {&CommandListArea::cmdSendList, "cmdSendList", "Se&nd List",
     "Send the list to the device on the showing channel", "F5"},
    {&CommandListArea::cmdStopSend, "cmdStopSend", "Stop", "Stop the run", "Shift+F5"},
};

struct ColumnWidth
{
    QLatin1StringView title;
    int characters;
};

constexpr ColumnWidth columnWidths[] = {
    {"Line"_L1, 7}, {"Operator"_L1, 9}, {"Command"_L1, 18}, {"Value"_L1, 18}, {"Tolerance"_L1, 10},
};

/// The box over a cell. A key that it has no use for, as Shift alone, and a turn of the wheel over
/// it would go on to the grid below, which takes them for the end of the editing.
class CellBox : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        QLineEdit::keyPressEvent(event);
        event->accept();
    }
    void wheelEvent(QWheelEvent *event) override { event->accept(); }
};

/// The key presses the button while it can be pressed; the tool tip tells it.
void addShortcut(QPushButton &button, const QString &purpose, const QKeySequence &key)
{
    button.setToolTip(purpose);
    if (key.isEmpty())
        return;
    button.setToolTip(u"%1 (%2)"_s.arg(purpose, key.toString(QKeySequence::NativeText)));
    auto *shortcut = new QShortcut(key, button.window());
    QObject::connect(shortcut, &QShortcut::activated, &button, [&button] {
        if (button.isVisible())
            button.click();
    });
}

} // namespace

void CommandListArea::makeControls()
{
    for (const ButtonRow &button : buttonRows) {
        const QLatin1StringView purpose(button.purpose);
        auto *made = named(new QPushButton(QLatin1StringView(button.caption), this),
                           QLatin1StringView(button.name), purpose);
        addShortcut(*made, purpose, QKeySequence(QLatin1StringView(button.shortcut)));
        made->setAutoDefault(false);
        this->*button.member = made;
    }
    lblFileName = named(new ElidedLabel(this), u"lblFileName"_s, u"Name of the list file"_s);
    lblProgress = named(new QLabel(this), u"lblProgress"_s, u"Progress of the run"_s);
    txtVDL = named(new QPlainTextEdit(this), u"txtVDL"_s, u"Comments of the list"_s);
    txtVDL->setPlaceholderText(u"Comments"_s);
    txtVDL->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtVDL->setTabChangesFocus(true);
    flexgridVDL = named(new TextGrid(m_list, this), u"flexgridVDL"_s, u"Command list"_s);
    flexgridVDL->horizontalHeader()->setStretchLastSection(true);
    // Another kind of list takes over the widths of the columns that both have.
    connect(flexgridVDL->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int, int width) {
                if (column < m_list.columnCount() - 1)
                    m_columnWidths[m_list.text(0, column)] = width;
            });
    txtFlexText = named(new CellBox(flexgridVDL->viewport()), u"txtFlexText"_s, u"Cell text"_s);
    txtFlexText->setMaxLength(std::numeric_limits<int>::max());
    oneLine::keepIn(*txtFlexText);
    txtFlexText->hide();
    chkStripOpr = named(new QCheckBox(u"Strip operator"_s, this), u"chkStripOpr"_s,
                        u"Send the commands of a test list without their leading operator"_s);
    chkStripOpr->setToolTip(chkStripOpr->accessibleName());
}

void CommandListArea::layOut()
{
    auto *title = new QLabel(u"Command list:"_s, this);
    auto *top = row({title, lblFileName, lblProgress, cmdMaxGrid, cmdMinGrid});
    top->setStretchFactor(lblFileName, 1);
    cmdMinGrid->hide();

    m_leftHand = new QWidget(this);
    auto *files = new QGridLayout;
    addRow(*files, 0, {cmdLoad, cmdSave});
    addRow(*files, 1, {cmdEditList, cmdSaveList});
    files->addWidget(cmdSaveResults, 2, 0, 1, 2);
    cmdSaveResults->setEnabled(false); // nothing has been run
    auto *left = new QVBoxLayout(m_leftHand);
    left->setContentsMargins(0, 0, 0, 0);
    left->addWidget(txtVDL);
    left->addLayout(files);

    auto *list = new QWidget(this);
    auto *buttons = row({cmdAddRow, cmdDeleteRow, cmdClearCol, cmdClear, nullptr, chkStripOpr,
                         cmdGetList, cmdSendList, cmdStopSend});
    auto *right = new QVBoxLayout(list);
    right->setContentsMargins(0, 0, 0, 0);
    right->addWidget(flexgridVDL);
    right->addLayout(buttons);

    auto *splitter = named(new QSplitter(this), u"splitList"_s, QString());
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_leftHand);
    splitter->addWidget(list);
    splitter->setStretchFactor(1, 1);

    auto *all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addWidget(splitter, 1);
    ScrollPage::wrap(*this);
    orderTabs({cmdMaxGrid, cmdMinGrid, txtVDL, cmdLoad, cmdSave, cmdEditList, cmdSaveList,
               cmdSaveResults, flexgridVDL, cmdAddRow, cmdDeleteRow, cmdClearCol, cmdClear,
               chkStripOpr, cmdGetList, cmdSendList, cmdStopSend});
}

void CommandListArea::setColumnWidths()
{
    const int character = fontMetrics().horizontalAdvance(u'0');
    for (int column = 0; column < m_list.columnCount() - 1; ++column) {
        const QString title = m_list.text(0, column);
        const auto found = std::ranges::find(columnWidths, QLatin1StringView(title.toLatin1()),
                                             &ColumnWidth::title);
        if (const auto chosen = m_columnWidths.constFind(title);
            chosen != m_columnWidths.constEnd())
            flexgridVDL->setColumnWidth(column, *chosen);
        else if (found != std::end(columnWidths))
            flexgridVDL->setColumnWidth(column, found->characters * character);
    }
}

} // namespace corvane
