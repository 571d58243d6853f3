// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/setup/frmGpibAdapters.h"

#include "core/text/Dialogs.h"
#include "devices/GpibAdapterFactory.h"
#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/EditableBox.h"

#include <QComboBox>
#include <QGroupBox>

namespace corvane {

using namespace controls;

namespace {

struct Kind
{
    QString caption;
    QString word;    ///< the choice's text, before its place
    QString place{}; ///< what its place looks like; empty: it has none
    bool isOnSerialPort = false;
};

/// In the order of GpibAdapterChoice::Kind.
const std::array kinds{
    Kind{u"Automatic"_s, u"auto"_s},
    Kind{u"None"_s, u"none"_s},
    Kind{u"\"++\" over the network"_s, u"tcp"_s, u"host, or host:port"_s},
    Kind{u"\"++\" over a serial port"_s, u"serial"_s, u"device"_s, true},
    Kind{u"GPIB library"_s, u"library"_s, u"the library's board number"_s},
    Kind{u"VISA"_s, u"visa"_s},
};

const Kind &kindOf(const QComboBox &box)
{
    return kinds.at(static_cast<std::size_t>(box.currentIndex()));
}

} // namespace

frmGpibAdapters::frmGpibAdapters(Parts parts, QWidget *parent)
    : ReopenedDialog(u"frmGpibAdapters"_s, u"GPIB Adapters"_s, parent)
    , m_parts(std::move(parts))
{
    auto *rows = new QVBoxLayout(this);
    auto *grid = new QGridLayout;
    grid->setColumnStretch(2, 1);
    for (int board = 0; board < boardCount; ++board)
        createRow(*grid, board);
    rows->addLayout(grid);
    auto *installed = new QGroupBox(u"Installed on this computer"_s);
    lblInstalled = note(u"lblInstalled"_s);
    (new QVBoxLayout(installed))->addWidget(lblInstalled);
    addAll(*rows, {installed, nullptr});
    cmdOK = button(u"&OK"_s, u"cmdOK"_s, this, &frmGpibAdapters::cmdOK_Click);
    cmdCancel = button(u"&Cancel"_s, u"cmdCancel"_s, this, &frmGpibAdapters::cmdCancel_Click);
    cmdOK->setDefault(true);
    rows->addLayout(row({nullptr, cmdOK, cmdCancel}));
    finishLayout(100);
    cmdTest.connectTo(this, &frmGpibAdapters::cmdTest_Click);
}

void frmGpibAdapters::createRow(QGridLayout &grid, int board)
{
    const QString name = GpibAddress::boardName(board);
    auto *label = new QLabel(u"GPIB&%1"_s.arg(board));
    auto *kind = named(new QComboBox, indexed(u"cboKind"_s, board), u"Adapter of "_s + name);
    for (const Kind &entry : kinds)
        kind->addItem(entry.caption);
    label->setBuddy(kind);
    auto *place =
        named(new EditableBox, indexed(u"cboPlace"_s, board), u"Place of the adapter of "_s + name);
    cmdTest[board] = named(new QPushButton(u"&Test"_s), indexed(u"cmdTest"_s, board),
                           u"Test the adapter of "_s + name);
    cmdTest[board]->setAutoDefault(false); // Enter takes the choices over
    cmdTest[board]->setToolTip(u"Stores the choice and asks the adapter"_s);
    lblResult[board] = note(indexed(u"lblResult"_s, board));
    cboKind[board] = kind;
    connect(kind, &QComboBox::currentIndexChanged, this, [this, board] { cboKind_Click(board); });
    cboPlace[board] = place;

    const int row = board * 2;
    addRow(grid, row, {label, kind, place, cmdTest[board]});
    grid.addWidget(lblResult[board], row + 1, 1, 1, 3);
}

void frmGpibAdapters::Form_Load()
{
    for (int board = 0; board < boardCount; ++board) {
        showChoice(board);
        showResult(board, {});
    }
    showInstalled();
}

void frmGpibAdapters::showChoice(int board)
{
    const GpibAdapterChoice &choice = m_parts.choices.at(static_cast<std::size_t>(board));
    cboKind[board]->setCurrentIndex(static_cast<int>(choice.kind));
    cboKind_Click(board);
    cboPlace[board]->setEditText(choice.toString().section(u':', 1));
}

void frmGpibAdapters::showInstalled()
{
    QStringList lines;
    for (const auto &library : m_parts.factory.installed())
        lines.append(u"%1: %2"_s.arg(library.kind, library.file));
    if (lines.isEmpty())
        lines.append(u"No GPIB library and no VISA library.  A \"++\" controller "
                     "needs none."_s);
    lblInstalled->setText(lines.join(u'\n'));
}

void frmGpibAdapters::cboKind_Click(int board)
{
    if (!cboKind.holds(board))
        return;
    QComboBox *place = cboPlace[board];
    const Kind &kind = kindOf(*cboKind[board]);
    place->clear();
    if (kind.isOnSerialPort)
        place->addItems(m_parts.serialDevices());
    else
        place->clearEditText();
    place->setEnabled(!kind.place.isEmpty());
    place->lineEdit()->setPlaceholderText(kind.place);
}

GpibAdapterChoice frmGpibAdapters::choiceOf(int board) const
{
    const Kind &kind = kindOf(*cboKind[board]);
    QString text = kind.word;
    if (!kind.place.isEmpty())
        text += u':' + cboPlace[board]->currentText().trimmed();
    return GpibAdapterChoice::parse(text);
}

void frmGpibAdapters::store(int board, const GpibAdapterChoice &choice)
{
    m_parts.control.forgetAdapter(board);
    m_parts.choices.at(static_cast<std::size_t>(board)) = choice;
}

void frmGpibAdapters::cmdTest_Click(int board)
{
    if (!cboKind.holds(board) || isBusy())
        return;
    const auto testing = procedure();
    showResult(board, u"Asking the adapter..."_s);
    QString answer;
    try {
        store(board, choiceOf(board));
        answer = m_parts.control.adapterDescription(board) + u": "_s +
                 m_parts.control.adapterVersion(board);
    } catch (const PlatformError &fault) {
        answer = fault.description();
    }
    showResult(board, answer);
}

void frmGpibAdapters::cmdOK_Click()
{
    try {
        GpibAdapterChoices wanted;
        for (int board = 0; board < boardCount; ++board)
            wanted.at(static_cast<std::size_t>(board)) = choiceOf(board);
        for (int board = 0; board < boardCount; ++board) {
            const GpibAdapterChoice &choice = wanted.at(static_cast<std::size_t>(board));
            if (choice != m_parts.choices.at(static_cast<std::size_t>(board)))
                store(board, choice);
        }
    } catch (const PlatformError &fault) {
        m_parts.dialogs.showMessage(this, fault.description());
        return;
    }
    close();
}

void frmGpibAdapters::endProcedure()
{
    if (isBusy())
        m_parts.control.cancel();
}

/// The window grows when the text needs it.
void frmGpibAdapters::showResult(int board, const QString &text)
{
    lblResult[board]->setText(text);
    lblResult[board]->setVisible(!text.isEmpty());
    if (!text.isEmpty())
        growToFit();
}

} // namespace corvane
