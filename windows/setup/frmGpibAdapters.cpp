#include "windows/setup/frmGpibAdapters.h"

#include "core/text/Dialogs.h"
#include "devices/GpibAdapterFactory.h"
#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "windows/widgets/EditableBox.h"
#include "windows/widgets/Naming.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>

namespace corvane {

namespace {

struct Kind
{
    const char16_t *caption;
    const char16_t *word;  ///< the choice's text, before its place
    const char16_t *place; ///< what its place looks like; null: it has none
};

/// In the order of GpibAdapterChoice::Kind.
constexpr std::array kinds{
    Kind{u"Automatic", u"auto", nullptr},
    Kind{u"None", u"none", nullptr},
    Kind{u"\"++\" over the network", u"tcp", u"host, or host:port"},
    Kind{u"\"++\" over a serial port", u"serial", u"device"},
    Kind{u"GPIB library", u"library", u"the library's board number"},
    Kind{u"VISA", u"visa", nullptr},
};

constexpr auto serialKind = static_cast<int>(GpibAdapterChoice::Kind::Serial);

std::size_t indexOf(int board)
{
    return static_cast<std::size_t>(board);
}

} // namespace

frmGpibAdapters::frmGpibAdapters(Parts parts, QWidget *parent)
    : ReopenedDialog(u"frmGpibAdapters"_s, u"GPIB Adapters"_s, parent)
    , m_parts(std::move(parts))
{
    auto *rows = new QVBoxLayout(this);
    auto *grid = new QGridLayout;
    grid->setColumnStretch(2, 1);
    for (std::size_t board = 0; board < boardCount; ++board)
        createRow(*grid, board);
    rows->addLayout(grid);
    auto *frame = new QGroupBox(u"Installed on this computer"_s);
    lblInstalled = new QLabel;
    lblInstalled->setObjectName(u"lblInstalled"_s);
    lblInstalled->setWordWrap(true);
    lblInstalled->setTextInteractionFlags(Qt::TextSelectableByMouse);
    (new QVBoxLayout(frame))->addWidget(lblInstalled);
    rows->addWidget(frame);
    rows->addStretch();
    cmdOK = named(new QPushButton(u"&OK"_s), u"cmdOK"_s);
    cmdCancel = named(new QPushButton(u"&Cancel"_s), u"cmdCancel"_s);
    cmdOK->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    rows->addLayout(buttons);
    setMinimumWidth(100 * fontMetrics().averageCharWidth());
    connectControls();
}

void frmGpibAdapters::createRow(QGridLayout &grid, std::size_t board)
{
    const QString name = u"GPIB%1"_s.arg(board);
    auto *label = new QLabel(u"GPIB&%1"_s.arg(board));
    auto *kind = named(new QComboBox, indexed(u"cboKind"_s, board), u"Adapter of "_s + name);
    for (const Kind &entry : kinds)
        kind->addItem(QString::fromUtf16(entry.caption));
    label->setBuddy(kind);
    auto *place =
        named(new EditableBox, indexed(u"cboPlace"_s, board), u"Place of the adapter of "_s + name);
    cmdTest[board] = named(new QPushButton(u"&Test"_s), indexed(u"cmdTest"_s, board),
                           u"Test the adapter of "_s + name);
    cmdTest[board]->setAutoDefault(false); // Enter takes the choices over
    cmdTest[board]->setToolTip(u"Stores the choice and asks the adapter"_s);
    auto *result = new QLabel;
    result->setObjectName(indexed(u"lblResult"_s, board));
    result->setWordWrap(true);
    result->setTextInteractionFlags(Qt::TextSelectableByMouse);

    const int row = static_cast<int>(board) * 2;
    grid.addWidget(label, row, 0);
    grid.addWidget(kind, row, 1);
    grid.addWidget(place, row, 2);
    grid.addWidget(cmdTest[board], row, 3);
    grid.addWidget(result, row + 1, 1, 1, 3);
    cboKind[board] = kind;
    cboPlace[board] = place;
    lblResult[board] = result;
}

void frmGpibAdapters::connectControls()
{
    for (int board = 0; board < static_cast<int>(boardCount); ++board) {
        connect(cboKind[indexOf(board)], &QComboBox::currentIndexChanged, this,
                [this, board] { cboKind_Click(board); });
        connect(cmdTest[indexOf(board)], &QPushButton::clicked, this,
                [this, board] { cmdTest_Click(board); });
    }
    connect(cmdOK, &QPushButton::clicked, this, &frmGpibAdapters::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmGpibAdapters::cmdCancel_Click);
}

void frmGpibAdapters::Form_Load()
{
    for (std::size_t board = 0; board < boardCount; ++board) {
        showChoice(board);
        showResult(board, {});
    }
    showInstalled();
}

void frmGpibAdapters::showChoice(std::size_t board)
{
    const GpibAdapterChoice &choice = m_parts.choices[board];
    cboKind[board]->setCurrentIndex(static_cast<int>(choice.kind));
    cboKind_Click(static_cast<int>(board));
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
    if (board < 0 || indexOf(board) >= boardCount)
        return;
    QComboBox *place = cboPlace[indexOf(board)];
    const int kind = cboKind[indexOf(board)]->currentIndex();
    const char16_t *example = kinds[static_cast<std::size_t>(kind)].place;
    place->clear();
    if (kind == serialKind)
        place->addItems(m_parts.serialDevices());
    else
        place->clearEditText();
    place->setEnabled(example != nullptr);
    place->lineEdit()->setPlaceholderText(example ? QString::fromUtf16(example) : QString());
}

GpibAdapterChoice frmGpibAdapters::choiceOf(std::size_t board) const
{
    const Kind &kind = kinds[static_cast<std::size_t>(cboKind[board]->currentIndex())];
    QString text = QString::fromUtf16(kind.word);
    if (kind.place)
        text += u':' + cboPlace[board]->currentText().trimmed();
    return GpibAdapterChoice::parse(text);
}

void frmGpibAdapters::store(std::size_t board, const GpibAdapterChoice &choice)
{
    m_parts.control.forgetAdapter(static_cast<int>(board));
    m_parts.choices[board] = choice;
}

void frmGpibAdapters::cmdTest_Click(int board)
{
    if (board < 0 || indexOf(board) >= boardCount || m_testing)
        return;
    m_testing = true;
    const auto tested = qScopeGuard([this] { m_testing = false; });
    showResult(indexOf(board), u"Asking the adapter..."_s);
    QString answer;
    try {
        store(indexOf(board), choiceOf(indexOf(board)));
        answer = m_parts.control.adapterDescription(board) + u": "_s +
                 m_parts.control.adapterVersion(board);
    } catch (const PlatformError &fault) {
        answer = fault.description();
    }
    showResult(indexOf(board), answer);
}

void frmGpibAdapters::cmdOK_Click()
{
    try {
        GpibAdapterChoices wanted;
        for (std::size_t board = 0; board < boardCount; ++board)
            wanted[board] = choiceOf(board);
        for (std::size_t board = 0; board < boardCount; ++board) {
            if (wanted[board] != m_parts.choices[board])
                store(board, wanted[board]);
        }
    } catch (const PlatformError &fault) {
        m_parts.dialogs.showMessage(this, fault.description());
        return;
    }
    close();
}

void frmGpibAdapters::cmdCancel_Click()
{
    close();
}

void frmGpibAdapters::done(int result)
{
    if (m_testing)
        m_parts.control.cancel();
    ReopenedDialog::done(result);
}

/// The window grows when the text needs it.
void frmGpibAdapters::showResult(std::size_t board, const QString &text)
{
    lblResult[board]->setText(text);
    lblResult[board]->setVisible(!text.isEmpty());
    if (!text.isEmpty())
        growToFit();
}

} // namespace corvane
