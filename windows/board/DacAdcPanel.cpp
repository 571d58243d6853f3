// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/DacAdcPanel.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardTexts.h"
#include "core/board/DacUnits.h"
#include "core/text/Numbers.h"
#include "windows/widgets/Controls.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>

#include <cmath>

namespace corvane {

using namespace controls;

namespace {

constexpr qint16 betweenChannelsMs = 255;

/// The field's number, rounded to five decimals; nothing when it is none or too large.
std::optional<float> fieldValue(const QStringList &fields, qsizetype index)
{
    if (index >= fields.size() || !numbers::isNumeric(fields[index]))
        return std::nullopt;
    const float value = numbers::single(numbers::fixed5(fields[index]).toDouble());
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

} // namespace

DacAdcPanel::DacAdcPanel(BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
{
    auto *layout = new QGridLayout(this);
    layout->addWidget(makeUnits(), 0, 0, 1, 2);
    layout->addWidget(makeDacs(), 1, 0);
    layout->addWidget(makeAdcs(), 1, 1);
    lblProgress = progressLine(u"lblProgressDacAdc"_s, u"Progress"_s);
    layout->addWidget(lblProgress, 2, 0, 1, 2);
    layout->setRowStretch(1, 1);
    connectControls();
    chkBertanDac_Click(); // shows the names
}

QWidget *DacAdcPanel::makeUnits()
{
    auto *box = new QGroupBox(u"Units"_s);
    auto *row = new QHBoxLayout(box);
    optDacUnits[Hex] = named(new QRadioButton(u"&Hexadecimal"_s), indexed(u"optDacUnits"_s, Hex),
                             u"DAC units hexadecimal"_s);
    optDacUnits[Volts] = named(new QRadioButton(u"&Volts"_s), indexed(u"optDacUnits"_s, Volts),
                               u"DAC units volts"_s);
    optDacUnits[Volts]->setChecked(true);
    lblDacRange = named(new QLabel(boardTexts::dacRangeVolts), u"lblDacRange"_s,
                        u"Range of the DAC entries"_s);
    chkBertanDac = named(new QCheckBox(u"Use &Bertan command set"_s), u"chkBertanDac"_s,
                         u"Use Bertan command set"_s);
    addAll(*row, {optDacUnits[Hex], optDacUnits[Volts], lblDacRange, nullptr, chkBertanDac});
    row->insertSpacing(2, 24);
    return box;
}

QWidget *DacAdcPanel::makeDacs()
{
    auto *box = new QGroupBox(u"DAC"_s);
    auto *grid = new QGridLayout(box);
    for (int i = 0; i < channels; ++i) {
        lblReadDacLabel[i] = named(new QLabel, u"lblReadDacLabel"_s, u"Name of DAC %1"_s, i);
        txtSendDac[i] = entry(10, u"txtSendDac"_s, u"Value for DAC %1"_s, i);
        txtSendDac[i]->setText(numbers::fixed5(0.0));
        cmdSendDac[i] = exchanging(button(u"&Send"_s, u"cmdSendDac"_s, u"Send to DAC %1"_s, i));
        addRow(*grid, i, {lblReadDacLabel[i], txtSendDac[i], cmdSendDac[i]});
        connect(txtSendDac[i], &QLineEdit::returnPressed, this, [this, i] { cmdSendDac_Click(i); });
    }
    txtSetAllDac = entry(10, u"txtSetAllDac"_s, u"Value for all DACs"_s);
    txtSetAllDac->setText(numbers::fixed5(0.0));
    cmdSetAllDac =
        button(u"Set &All"_s, u"cmdSetAllDac"_s, u"Copy the value into all DAC entries"_s, this,
               &DacAdcPanel::cmdSetAllDac_Click);
    cmdSendAllDacs = exchanging(button(u"Send A&ll"_s, u"cmdSendAllDacs"_s, u"Send to all DACs"_s,
                                       this, &DacAdcPanel::cmdSendAllDacs_Click));
    addRow(*grid, channels, {new QLabel(u"All"_s), txtSetAllDac, cmdSetAllDac});
    grid->addWidget(cmdSendAllDacs, channels + 1, 2);
    spread(*grid, 0, channels + 1);
    grid->setColumnStretch(1, 1);
    return box;
}

QWidget *DacAdcPanel::makeAdcs()
{
    auto *box = new QGroupBox(u"ADC"_s);
    auto *grid = new QGridLayout(box);
    for (int i = 0; i < channels; ++i) {
        lblReadAdcLabel[i] = named(new QLabel, u"lblReadAdcLabel"_s, u"Name of ADC %1"_s, i);
        lblReadAdc[i] = readOut(10, u"lblReadAdc"_s, u"Reading of ADC %1"_s, i);
        cmdReadAdc[i] = exchanging(button(u"&Read"_s, u"cmdReadAdc"_s, u"Read ADC %1"_s, i));
        addRow(*grid, i, {lblReadAdcLabel[i], lblReadAdc[i], cmdReadAdc[i]});
    }
    cmdReadAdcAll = exchanging(button(u"Rea&d All"_s, u"cmdReadAdcAll"_s, u"Read all ADCs"_s, this,
                                      &DacAdcPanel::cmdReadAdcAll_Click));
    grid->addWidget(cmdReadAdcAll, channels + 1, 2);
    auto *beside = new QWidget; // of "All": rows without a widget would come closer
    beside->setFixedHeight(cmdReadAdcAll->sizeHint().height());
    grid->addWidget(beside, channels, 2);
    spread(*grid, 0, channels + 1);
    grid->setColumnStretch(1, 1);
    return box;
}

void DacAdcPanel::connectControls()
{
    cmdSendDac.connectTo(this, &DacAdcPanel::cmdSendDac_Click);
    cmdReadAdc.connectTo(this, &DacAdcPanel::cmdReadAdc_Click);
    optDacUnits.connectTo(this, &DacAdcPanel::optDacUnits_Click);
    connect(chkBertanDac, &QCheckBox::toggled, this, &DacAdcPanel::chkBertanDac_Click);
}

bool DacAdcPanel::isBertan() const
{
    return chkBertanDac->isChecked();
}

void DacAdcPanel::cmdSendDac_Click(int channel)
{
    if (cmdSendDac.holds(channel))
        operate([this, channel] { sendDac(channel); });
}

void DacAdcPanel::cmdReadAdc_Click(int channel)
{
    if (cmdReadAdc.holds(channel))
        operate([this, channel] { readAdc(channel); });
}

void DacAdcPanel::cmdSendAllDacs_Click()
{
    runAll(boardTexts::sendingDac, 125, &DacAdcPanel::sendDac, boardTexts::dacNotSent);
}

void DacAdcPanel::cmdReadAdcAll_Click()
{
    runAll(boardTexts::readingAdc, 725, &DacAdcPanel::readAdc, boardTexts::noAdcValue);
}

void DacAdcPanel::runAll(const QString &what, int channelMs, bool (DacAdcPanel::*each)(int),
                         const QString &failed)
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
    QList<int> failures;
    for (int channel = 0; channel < channels; ++channel) {
        const int leftMs = (channels - channel) * (channelMs + betweenChannelsMs);
        const bool isKnown = !failures.contains(channel - 1); // an answer that stays out takes more
        showText(*lblProgress,
                 boardTexts::progress(what.arg(channel),
                                      isKnown ? std::optional(leftMs) : std::nullopt));
        if (!(this->*each)(channel))
            failures.append(channel);
        m_link.PauseMS(betweenChannelsMs);
        if (m_session.isStopped()) {
            showText(*lblProgress,
                     boardTexts::stoppedAt.arg(what.arg(channel), m_session.fault().simplified()));
            return;
        }
    }
    showText(*lblProgress, failures.isEmpty() ? boardTexts::done
                                              : boardTexts::doneBut.arg(
                                                    failed.arg(boardTexts::channelList(failures))));
}

void DacAdcPanel::cmdSetAllDac_Click()
{
    for (QLineEdit *box : txtSendDac)
        box->setText(txtSetAllDac->text());
}

void DacAdcPanel::optDacUnits_Click(int units)
{
    if (units == m_units || (units != Hex && units != Volts))
        return;
    m_units = units;
    optDacUnits[units]->setChecked(true);
    lblDacRange->setText(units == Hex ? boardTexts::dacRangeHex : boardTexts::dacRangeVolts);
    const auto convert = units == Hex ? dacUnits::toHexText : dacUnits::toVoltsText;
    for (QLineEdit *box : txtSendDac)
        box->setText(convert(box->text()));
    txtSetAllDac->setText(convert(txtSetAllDac->text()));
    for (size_t at = 0; at < lblReadAdc.size(); ++at) {
        if (!m_isBertanReading[at]) // that text has no unit
            lblReadAdc[at]->setText(convert(lblReadAdc[at]->text()));
    }
}

void DacAdcPanel::chkBertanDac_Click()
{
    const bool bertan = isBertan();
    for (int i = 0; i < channels; ++i) {
        lblReadDacLabel[i]->setText((bertan ? u"W %1"_s : u"DAC %1"_s).arg(i));
        lblReadAdcLabel[i]->setText((bertan ? u"M %1"_s : u"ADC %1"_s).arg(i));
    }
}

bool DacAdcPanel::sendDac(int channel)
{
    auto command = dacCommand(channel);
    if (!command || !m_session.checkSendable(*command))
        return false;
    m_link.OutputToSbc(*command);
    return m_link.isSent();
}

std::optional<QString> DacAdcPanel::dacCommand(int channel)
{
    const QString text = txtSendDac[channel]->text();
    if (m_units == Volts && isBertan()) {
        m_session.say(boardTexts::voltsInBertan);
        return std::nullopt;
    }
    auto command =
        m_units == Hex ? dacCommandFromHex(channel, text) : dacCommandFromVolts(channel, text);
    if (!command)
        m_session.say(boardTexts::invalidData);
    return command;
}

std::optional<QString> DacAdcPanel::dacCommandFromHex(int channel, const QString &text)
{
    const auto counts = dacUnits::countsFromHex(text);
    if (!counts)
        return std::nullopt;
    if (isBertan())
        return u"W%1%2\r"_s.arg(QString::number(channel), text.trimmed());
    return u"DAC %1,%2\r"_s.arg(numbers::numberText(channel),
                                numbers::fixed5(dacUnits::voltsOf(*counts)));
}

std::optional<QString> DacAdcPanel::dacCommandFromVolts(int channel, const QString &text)
{
    const auto value = numbers::numericValue(text);
    if (!value || *value < 0 || *value > dacUnits::fullScaleVolts)
        return std::nullopt;
    return u"DAC %1,%2\r"_s.arg(numbers::numberText(channel), text);
}

DacAdcPanel::AdcReply DacAdcPanel::ReadAdcChannel(int channel)
{
    const bool bertan = isBertan();
    m_link.PauseMS(100);
    const QString reply =
        m_link.ask(bertan ? u"M%1"_s.arg(channel) : u"ADC? "_s + numbers::numberText(channel), 500);
    AdcReply result;
    if (bertan) {
        result.bertan = reply.trimmed();
    } else if (reply.contains(u',')) {
        const QStringList fields = reply.split(u',');
        result.value = fieldValue(fields, 0);
        result.gain = fieldValue(fields, 1);
        result.offset = fieldValue(fields, 2);
    }
    return result;
}

bool DacAdcPanel::readAdc(int channel)
{
    const AdcReply reply = ReadAdcChannel(channel);
    QString text; // blank without a value: an old reading must not pass for a new one
    if (reply.bertan)
        text = *reply.bertan;
    else if (reply.value && m_units == Hex)
        text = numbers::toHex(dacUnits::countsOf(double{*reply.value}));
    else if (reply.value)
        text = numbers::fixed5(double{*reply.value});
    m_isBertanReading[static_cast<size_t>(channel)] = reply.bertan.has_value();
    showText(*lblReadAdc[channel], text);
    return !text.isEmpty();
}

} // namespace corvane
