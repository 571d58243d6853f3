// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/report/frmSBCPrint.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
#include "core/report/CalibrationReport.h"
#include "core/report/ReportTexts.h"
#include "core/text/Dialogs.h"
#include "core/text/Latin1.h"
#include "core/text/ShownText.h"
#include "devices/WholeFile.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/ScrollPage.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QScopeGuard>
#include <QShortcut>
#include <QStatusBar>

#include <algorithm>

namespace corvane {

using namespace controls;
using reportTexts::PrintError;

namespace {

constexpr qint16 beforeReadMs = 25;

/// Today in the system's short form; where that needs characters that the report cannot hold, in
/// the international form.
QString todayText()
{
    const QDate today = QDate::currentDate();
    const QString text = QLocale::system().toString(today, QLocale::ShortFormat);
    return latin1::fits(text) ? text : today.toString(Qt::ISODate);
}

} // namespace

const std::array<frmSBCPrint::FieldRow, 12> &frmSBCPrint::fieldRows()
{
    using W = frmSBCPrint;
    using F = ReportFields;
    static const std::array<FieldRow, 12> rows = {{
        {u"Part Number"_s, &W::txtPartNum, &F::partNum, u"txtPartNum"_s},
        {u"Serial Number"_s, &W::txtSerialNum, &F::serialNum, u"txtSerialNum"_s},
        {u"PIC Firmware"_s, &W::txtPicFirmWare, &F::picFirmWare, u"txtPicFirmWare"_s},
        {u"Rabbit Firmware"_s, &W::txtRabbitVersion, &F::rabbitVersion, u"txtRabbitVersion"_s},
        {u"File Name"_s, &W::txtFileName, &F::fileName, u"txtFileName"_s},
        {u"Test Date"_s, &W::txtDate, &F::date, u"txtDate"_s},
        {u"Test Utility Ver."_s, &W::txtAppVer, &F::appVer, u"txtAppVer"_s},
        {u"Technician"_s, &W::txtYourName, &F::yourName, u"txtYourName"_s},
        {u"Meter Name"_s, &W::txtMeterName, &F::meterName, u"txtMeterName"_s},
        {u"Meter Model"_s, &W::txtMeterModel, &F::meterModel, u"txtMeterModel"_s},
        {u"Meter Cal Due"_s, &W::txtMeterCalDue, &F::meterCalDue, u"txtMeterCalDue"_s},
        {u"ADI Number"_s, &W::txtMeterADINum, &F::meterADINum, u"txtMeterADINum"_s},
    }};
    return rows;
}

frmSBCPrint::frmSBCPrint(const ReportedBoard &board, modSBC &remembered, Dialogs &dialogs,
                         QString version)
    : m_session(&board.session)
    , m_board(board)
    , m_remembered(remembered)
    , m_dialogs(dialogs)
    , m_version(std::move(version))
{
    setObjectName(u"frmSBCPrint"_s);
    setWindowTitle(reportTexts::caption);
    auto *layout = new QVBoxLayout(this);
    lblUnsaved = named(new QLabel, u"lblUnsaved"_s, u"Not saved to EEPROM"_s);
    lblUnsaved->setWordWrap(true);
    makeStatusBar();
    addAll(*layout,
           {makeGroup(u"PRODUCT INFORMATION"_s, 0, 4), makeGroup(u"TEST INFORMATION"_s, 4, 4),
            makeGroup(u"TEST METER"_s, 8, 4), lblUnsaved, makeButtons(), nullptr});
    ScrollPage::wrap(*this);
    this->layout()->addWidget(StatusBar1);
    resize(520, sizeHint().height());
}

frmSBCPrint::~frmSBCPrint() = default;

void frmSBCPrint::showUnsaved(const QString &text)
{
    lblUnsaved->setText(text);
}

QWidget *frmSBCPrint::makeGroup(const QString &title, size_t first, size_t count)
{
    auto *box = new QGroupBox(title);
    auto *form = new QFormLayout(box);
    for (size_t i = first; i < first + count; ++i) {
        const FieldRow &row = fieldRows()[i];
        this->*row.box = entry(24, row.name, row.label);
        connect(this->*row.box, &QLineEdit::returnPressed, this, [this] { cmdAccept->click(); });
        auto *label = new QLabel(row.label);
        label->setMinimumWidth(fontMetrics().horizontalAdvance(fieldRows()[3].label) + 12);
        form->addRow(label, this->*row.box);
    }
    return box;
}

QWidget *frmSBCPrint::makeButtons()
{
    auto *box = new QWidget;
    using W = frmSBCPrint;
    cmdAutoFill = button(u"Auto &Fill"_s, u"cmdAutoFill"_s, u"Fill in from the board"_s, this,
                         &W::cmdAutoFill_Click);
    cmdGenFilename = button(u"&Generate Filename"_s, u"cmdGenFilename"_s,
                            u"Generate the file name"_s, this, &W::cmdGenFilename_Click);
    cmdAccept =
        button(u"&Accept"_s, u"cmdAccept"_s, u"Save the report"_s, this, &W::cmdAccept_Click);
    cmdCAncel =
        button(u"&Cancel"_s, u"cmdCAncel"_s, u"Close without saving"_s, this, &W::cmdCAncel_Click);
    auto *buttons = row({cmdAutoFill, cmdGenFilename, nullptr, cmdAccept, cmdCAncel});
    buttons->setContentsMargins({});
    box->setLayout(buttons);
    auto *escape = new QShortcut(Qt::Key_Escape, this);
    connect(escape, &QShortcut::activated, this, &frmSBCPrint::cmdCAncel_Click);
    return box;
}

void frmSBCPrint::makeStatusBar()
{
    StatusBar1 = named(new QStatusBar, u"StatusBar1"_s, u"Last exchange"_s);
    StatusBar1->setSizeGripEnabled(false);
    statusPanel = readOut(20, u"StatusBar1_1"_s, u"Last command or answer of Auto Fill"_s);
    StatusBar1->addWidget(statusPanel, 1);
}

void frmSBCPrint::showBusy(bool busy)
{
    for (QPushButton *action : {cmdAutoFill, cmdGenFilename, cmdAccept})
        action->setEnabled(!busy);
}

void frmSBCPrint::Form_Load()
{
    const auto stays = procedure();
    m_remembered.report.date = todayText();
    m_remembered.report.appVer = m_version;
    // All before the board is asked: what the user types meanwhile stays.
    for (const FieldRow &row : fieldRows())
        (this->*row.box)->setText(m_remembered.report.*row.field);
    fillFromBoard();
    if (!isClosing())
        cmdGenFilename_Click();
}

void frmSBCPrint::remember()
{
    for (const FieldRow &row : fieldRows())
        m_remembered.report.*row.field = (this->*row.box)->text();
}

void frmSBCPrint::cmdAutoFill_Click()
{
    if (isBusy() || isClosing())
        return;
    const auto stays = procedure();
    fillFromBoard();
}

void frmSBCPrint::fillFromBoard()
{
    if (!m_session)
        return;
    if (m_session->isRunning()) {
        statusPanel->setText(reportTexts::busy);
        return;
    }
    const auto operation = m_session->begin();
    if (!operation)
        return;
    m_exchanging = true;
    const auto done = qScopeGuard([this] { m_exchanging = false; });
    const QString command = u"*IDN?"_s;
    statusPanel->setText(command);
    const QString reply = m_board.link.ask(command, beforeReadMs);
    if (isClosing())
        return;
    const auto identity = calibrationReport::parseIdentity(reply);
    const QString shown = shownText(reply);
    statusPanel->setText(identity ? shown : reportTexts::syntaxError + shown);
    if (!identity)
        return;
    ReportFields &fields = m_remembered.report;
    txtPartNum->setText(fields.partNum = identity->partNum);
    txtSerialNum->setText(fields.serialNum = identity->serialNum);
    txtPicFirmWare->setText(fields.picFirmWare = identity->picFirmWare);
    txtRabbitVersion->setText(fields.rabbitVersion = identity->rabbitVersion);
}

void frmSBCPrint::cmdGenFilename_Click()
{
    m_remembered.report.fileName =
        calibrationReport::fileName(txtPartNum->text().trimmed(), txtSerialNum->text().trimmed());
    txtFileName->setText(m_remembered.report.fileName);
}

void frmSBCPrint::cmdAccept_Click()
{
    if (isBusy() || isClosing())
        return;
    const auto stays = procedure();
    remember();
    if (refusesToSave())
        return;
    if (const QString said = statusPanel->text();
        said == reportTexts::busy || said == reportTexts::notSaved)
        statusPanel->clear(); // it is over
    PrintCals();
    close();
}

bool frmSBCPrint::refusesToSave()
{
    if (m_session && m_session->isRunning()) {
        statusPanel->setText(reportTexts::notSaved); // the grid is half filled
        return true;
    }
    const auto misfit = calibrationReport::firstMisfit(m_remembered.report);
    if (!misfit)
        return false;
    const auto row = std::ranges::find(fieldRows(), misfit->field, &FieldRow::field);
    tell(reportTexts::notWritable(row->label, misfit->character));
    QLineEdit &box = *(this->*row->box);
    box.setFocus();
    box.setSelection(static_cast<int>(box.text().indexOf(misfit->character)),
                     static_cast<int>(misfit->character.size()));
    return true;
}

void frmSBCPrint::PrintCals()
{
    if (!m_session)
        return;
    const auto stays = procedure();
    const QString report = calibrationReport::text(m_remembered.report, m_board.table);
    ++m_openBoxes;
    const Dialogs::FileChoice choice =
        m_dialogs.saveFile(this, {.filter = u"Text(*.txt)|*.txt"_s,
                                  .folder = m_remembered.reportFolder,
                                  .name = txtFileName->text().trimmed()});
    --m_openBoxes;
    if (isClosing() || choice.outcome == Dialogs::FileChoice::Outcome::Cancelled)
        return;
    if (choice.outcome == Dialogs::FileChoice::Outcome::InvalidName) {
        tell(reportTexts::printErrorText(PrintError::InvalidName, choice.path, {}));
        return;
    }
    m_remembered.reportFolder = QFileInfo(choice.path).path() + u'/';
    write(choice.path, report.toLatin1());
}

void frmSBCPrint::write(const QString &path, const QByteArray &report)
{
    const QString fault = wholeFile::write(path, report);
    if (fault.isEmpty()) {
        tell(reportTexts::printSuccessful);
        return;
    }
    const QString description = u"%1: %2"_s.arg(QDir::toNativeSeparators(path), fault);
    tell(reportTexts::printErrorText(PrintError::Other, path, description));
}

void frmSBCPrint::tell(const QString &text)
{
    ++m_openBoxes;
    m_dialogs.showMessage(this, text);
    --m_openBoxes;
}

void frmSBCPrint::endProcedures()
{
    if (m_exchanging && m_session)
        m_session->interrupt();
    if (m_openBoxes > 0)
        m_dialogs.dismissAll();
}

} // namespace corvane
