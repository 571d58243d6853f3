// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/CalibrationPanel.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardTexts.h"
#include "core/board/UnsavedCalibrations.h"
#include "core/text/Numbers.h"
#include "windows/board/ManualCalibrationPanel.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/TextGrid.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QStackedLayout>

#include <algorithm>

namespace corvane {

using namespace controls;

namespace {

/// Two buttons in one place, the first one shown.
QStackedLayout *place(QBoxLayout *in, QPushButton *start, QPushButton *cancel)
{
    auto *stack = new QStackedLayout;
    stack->addWidget(start);
    stack->addWidget(cancel);
    in->addLayout(stack);
    return stack;
}

} // namespace

CalibrationPanel::CalibrationPanel(BoardLink &link, BoardSession &session,
                                   UnsavedCalibrations &unsaved, QWidget *identity)
    : BoardPanel(link, session)
    , m_unsaved(unsaved)
    , m_calibration(link, session, m_table)
    , m_scan(link, session, m_table)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(makeActions());
    auto *middle = row({makeGrid(), identity});
    middle->setStretch(0, 1);
    layout->addLayout(middle, 1);
    auto *manual = new QHBoxLayout;
    layout->addLayout(manual);
    for (const auto kind : {ManualCalibrationPanel::Dac, ManualCalibrationPanel::Adc}) {
        auto *panel = new ManualCalibrationPanel(kind, link, session);
        manual->addWidget(panel);
        connect(panel, &ManualCalibrationPanel::calibrationSent, this, [this](int channel) {
            m_calibratedBy = m_link.method();
            m_unsaved.setChanged(channel);
        });
    }
    connectSequences();
}

QWidget *CalibrationPanel::makeActions()
{
    auto *box = new QGroupBox(u"Calibrate Channels (IEEE Only)"_s);
    auto *rows = new QVBoxLayout(box);
    auto *row = new QHBoxLayout;
    rows->addLayout(row);
    using Panel = CalibrationPanel;
    cmdDec = button(u"&< CH"_s, u"cmdDec"_s, u"Previous channel"_s, this, &Panel::cmdDec_Click);
    txtChannel = entry(3, u"txtChannel"_s, u"Channel to calibrate"_s);
    txtChannel->setText(u"0"_s);
    txtChannel->setMaximumWidth(60);
    txtChannel->setAlignment(Qt::AlignCenter);
    cmdInc = button(u"CH &>"_s, u"cmdInc"_s, u"Next channel"_s, this, &Panel::cmdInc_Click);
    addAll(*row, {cmdDec, txtChannel, cmdInc});
    cmdCal = exchanging(button(u"&Calibrate Channel"_s, u"cmdCal"_s, u"Calibrate the channel"_s,
                               this, &Panel::cmdCal_Click));
    cmdCancelCal = button(u"Cance&l Calibration"_s, u"cmdCancelCal"_s, u"Cancel the calibration"_s,
                          this, &Panel::cmdCancelCal_Click);
    m_calPlace = place(row, cmdCal, cmdCancelCal);
    cmdScan =
        exchanging(button(u"&Scan All"_s, u"cmdScan"_s, u"Read all calibrations and the meter"_s,
                          this, &Panel::cmdScan_Click));
    cmdCancelScan = button(u"Cance&l Scan"_s, u"cmdCancelScan"_s, u"Cancel the scan"_s, this,
                           &Panel::cmdCancelScan_Click);
    m_scanPlace = place(row, cmdScan, cmdCancelScan);
    cmdScanCals = exchanging(button(u"Scan Calibrations &Only"_s, u"cmdScanCals"_s,
                                    u"Read all calibrations without the meter"_s, this,
                                    &Panel::cmdScanCals_Click));
    cmdWriteCal =
        exchanging(button(u"Sa&ve to EEPROM"_s, u"cmdWriteCal"_s,
                          u"Save the calibration in the board"_s, this, &Panel::cmdWriteCal_Click));
    cmdReport = button(u"Repor&t..."_s, u"cmdReport"_s, u"Calibration report"_s, this,
                       &Panel::reportRequested);
    addAll(*row, {cmdScanCals, cmdWriteCal, cmdReport});
    lblProgress = progressLine(u"lblProgress"_s, u"Progress"_s);
    rows->addWidget(lblProgress);
    return box;
}

QWidget *CalibrationPanel::makeGrid()
{
    auto *cells = new GridModel(this);
    TextTable start(CalibrationTable::rows, CalibrationTable::columns);
    for (int row = 0; row < start.rowCount(); ++row) {
        for (int column = 0; column < start.columnCount(); ++column)
            start.setText(row, column, m_table.text(row, column));
    }
    cells->setTable(std::move(start));
    MSFlexGrid1 = named(new TextGrid(*cells), u"MSFlexGrid1"_s, u"Calibration of the channels"_s);
    MSFlexGrid1->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    MSFlexGrid1->verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    return MSFlexGrid1;
}

void CalibrationPanel::connectSequences()
{
    for (const CalibrationSequence *sequence :
         std::initializer_list<CalibrationSequence *>{&m_calibration, &m_scan}) {
        connect(sequence, &CalibrationSequence::progressed, this,
                [this](const QString &text) { showText(*lblProgress, text); });
        connect(sequence, &CalibrationSequence::cellSelected, &MSFlexGrid1->cells(),
                &GridModel::setCurrentCell);
        connect(sequence, &CalibrationSequence::cellChanged, this,
                [this](int row, int column, const QString &remark) {
                    MSFlexGrid1->cells().setText(row, column, m_table.text(row, column));
                    MSFlexGrid1->cells().setRemark(row, column, remark);
                });
    }
    connect(&m_calibration, &Calibration::begun, this, [this](int channel) {
        m_calibratedBy = m_link.method();
        m_unsaved.setUnfinished(channel);
    });
    connect(&m_calibration, &Calibration::stored, &m_unsaved, &UnsavedCalibrations::setChanged);
}

void CalibrationPanel::cmdInc_Click()
{
    const int channel = numbers::leadingInteger(txtChannel->text());
    if (channel < CalibrationTable::channels - 1)
        txtChannel->setText(QString::number(channel + 1));
}

void CalibrationPanel::cmdDec_Click()
{
    const int channel = numbers::leadingInteger(txtChannel->text());
    if (channel > 0)
        txtChannel->setText(QString::number(channel - 1));
}

void CalibrationPanel::cmdCal_Click()
{
    const auto operation = m_session.begin(BoardSession::Uses::BoardAndMeter);
    if (!operation)
        return;
    const int channel = numbers::leadingInteger(txtChannel->text());
    if (!numbers::isNumeric(txtChannel->text()) || channel < 0 ||
        channel >= CalibrationTable::channels)
        m_session.say(boardTexts::badChannel);
    else if (const auto meter = checkMeterAddress(); meter && confirmMeter(channel))
        runCalibration(channel, *meter);
}

std::optional<int> CalibrationPanel::checkMeterAddress()
{
    constexpr int lastAddress = 30;
    const QString text = m_meterAddress.trimmed();
    const bool isWhole = !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= u'0' && c <= u'9';
    });
    const int address = numbers::leadingInteger(text);
    if (isWhole && address <= lastAddress)
        return address;
    m_session.say(boardTexts::badMeterAddress);
    return std::nullopt;
}

/// Only channel 0 is asked about, and only when the method shows that the meter may be missing.
bool CalibrationPanel::confirmMeter(int channel)
{
    if (channel != 0 || m_link.method() == BoardLink::Ieee)
        return true;
    return m_session.ask({.text = boardTexts::meterWarning,
                          .title = boardTexts::meterWarningTitle,
                          .buttons = Dialogs::Buttons::YesNo}) == Dialogs::Answer::Yes;
}

void CalibrationPanel::runCalibration(int channel, int meterAddress)
{
    showCancel(m_calPlace, true);
    window()->setCursor(Qt::WaitCursor);
    const CalibrationEnd end = m_calibration.calibrate(channel, meterAddress);
    showCancel(m_calPlace, false);
    window()->unsetCursor();
    showEnd(end);
}

void CalibrationPanel::cmdCancelCal_Click()
{
    showText(*lblProgress, boardTexts::cancelling);
    m_calibration.cancel();
}

void CalibrationPanel::cmdScan_Click()
{
    const auto operation = m_session.begin(BoardSession::Uses::BoardAndMeter);
    if (operation && checkMeterAddress())
        runScan([this] { return m_scan.scanAll(m_meterAddress); });
}

void CalibrationPanel::cmdScanCals_Click()
{
    if (const auto operation = m_session.begin())
        runScan([this] { return m_scan.scanCalibrations(); });
}

void CalibrationPanel::runScan(const std::function<CalibrationEnd()> &scan)
{
    showCancel(m_scanPlace, true);
    const CalibrationEnd end = scan();
    showCancel(m_scanPlace, false);
    showEnd(end);
}

void CalibrationPanel::cmdCancelScan_Click()
{
    showText(*lblProgress, boardTexts::cancelling);
    m_scan.cancel();
}

void CalibrationPanel::cmdWriteCal_Click()
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
    QString command = u"CAL:PIC\r"_s;
    m_link.OutputToSbc(command);
    if (!m_link.isSent()) {
        showText(*lblProgress, boardTexts::eepromNotSent.arg(m_session.fault().simplified()));
        return;
    }
    QStringList said{boardTexts::eepromSent, m_unsaved.unfinishedText()};
    if (!m_unsaved.isEmpty() && m_calibratedBy.value_or(m_link.method()) != m_link.method())
        said << boardTexts::calibratedElsewhere;
    else
        m_unsaved.setSaved();
    said.removeAll(QString());
    showText(*lblProgress, said.join(u"; "_s));
}

void CalibrationPanel::showCancel(QStackedLayout *place, bool running)
{
    QWidget *cancel = place->widget(1);
    const bool hadFocus = cancel->hasFocus();
    place->setCurrentIndex(running ? 1 : 0);
    if (running)
        cancel->setFocus();
    else if (hadFocus)
        setFocus();
}

void CalibrationPanel::showEnd(const CalibrationEnd &end)
{
    showText(*lblProgress, end.summary);
    if (!end.reason.isEmpty())
        m_session.say(end.reason);
}

} // namespace corvane
