// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/ManualCalibrationPanel.h"

#include "core/board/BoardLink.h"
#include "core/text/Numbers.h"
#include "windows/widgets/Controls.h"

#include <QComboBox>

namespace corvane {

using namespace controls;

ManualCalibrationPanel::ManualCalibrationPanel(Kind kind, BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
    , m_kind(kind)
{
    QGridLayout *grid = frame(*this, u"%1 Calibration"_s.arg(kindName()));
    addRow(*grid, 0,
           {new QLabel(u"Channel"_s), new QLabel(u"Value"_s), new QLabel(u"Gain"_s),
            new QLabel(u"Offset"_s)});
    makeEntries(*grid);
    makeReadOuts(*grid);
    for (int column = 1; column <= 3; ++column)
        grid->setColumnStretch(column, 1);
}

QString ManualCalibrationPanel::kindName() const
{
    return m_kind == Dac ? u"DAC"_s : u"ADC"_s;
}

QComboBox *ManualCalibrationPanel::channelBox(const QString &name, const QString &accessibleName)
{
    auto *box = named(new QComboBox, indexed(name, m_kind), accessibleName.arg(kindName()));
    for (int channel = 0; channel < 8; ++channel)
        box->addItem(QString::number(channel));
    return box;
}

void ManualCalibrationPanel::makeEntries(QGridLayout &grid)
{
    using Panel = ManualCalibrationPanel;
    cboChannelSet = channelBox(u"cboChannelSet"_s, u"%1 channel to set"_s);
    const auto entryFor = [this](const QString &name, const QString &accessibleName) {
        return entry(6, indexed(name, m_kind), accessibleName.arg(kindName()));
    };
    txtValue = entryFor(u"txtValue"_s, u"%1 value to set"_s);
    txtGain = entryFor(u"txtGain"_s, u"%1 gain to set"_s);
    txtOffset = entryFor(u"txtOffset"_s, u"%1 offset to set"_s);
    const QString caption = m_kind == Dac ? u"Set &DAC"_s : u"Set &ADC"_s;
    cmdSetCal = exchanging(button(caption, indexed(u"cmdSetCal"_s, m_kind),
                                  u"Set calibration of the %1"_s.arg(kindName()), this,
                                  &Panel::cmdSetCal_Click));
    cmdDefaultSet = button(u"De&fault Settings"_s, indexed(u"cmdDefaultSet"_s, m_kind),
                           u"Fill in the %1 default settings"_s.arg(kindName()), this,
                           &Panel::cmdDefaultSet_Click);
    addRow(grid, 1, {cboChannelSet, txtValue, txtGain, txtOffset, cmdSetCal, cmdDefaultSet});
}

void ManualCalibrationPanel::makeReadOuts(QGridLayout &grid)
{
    using Panel = ManualCalibrationPanel;
    cboChannel = channelBox(u"cboChannel"_s, u"%1 channel to read"_s);
    const auto labelFor = [this](const QString &name, const QString &accessibleName) {
        return readOut(6, indexed(name, m_kind), accessibleName.arg(kindName()));
    };
    lblValue = labelFor(u"lblValue"_s, u"%1 value read"_s);
    lblGain = labelFor(u"lblGain"_s, u"%1 gain read"_s);
    lblOffset = labelFor(u"lblOffset"_s, u"%1 offset read"_s);
    // The letters of the page have run out.
    const QString caption = m_kind == Dac ? u"&Read DAC"_s : u"Read ADC"_s;
    cmdReadCal = exchanging(button(caption, indexed(u"cmdReadCal"_s, m_kind),
                                   u"Read calibration of the %1"_s.arg(kindName()), this,
                                   &Panel::cmdReadCal_Click));
    if (m_kind == Adc) {
        cmdReadCal->setShortcut(QKeySequence(u"Ctrl+R"_s));
        cmdReadCal->setToolTip(u"Read the calibration of the ADC (Ctrl+R)"_s);
    }
    cmdCopy = button(u"Cop&y"_s, indexed(u"cmdCopy"_s, m_kind),
                     u"Copy the read %1 values into the entries"_s.arg(kindName()), this,
                     &Panel::cmdCopy_Click);
    addRow(grid, 2, {cboChannel, lblValue, lblGain, lblOffset, cmdReadCal, cmdCopy});
}

void ManualCalibrationPanel::cmdSetCal_Click()
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
    QStringList fields = {cboChannelSet->currentText()};
    if (m_kind == Dac)
        fields << txtValue->text();
    fields << txtGain->text() << txtOffset->text();
    QString command = kindName() + u' ' + fields.join(u',') + u'\r';
    if (!m_session.checkSendable(command))
        return;
    const int channel = cboChannelSet->currentIndex(); // the box may be changed meanwhile
    m_link.OutputToSbc(command);
    if (m_link.isSent())
        Q_EMIT calibrationSent(channel);
}

void ManualCalibrationPanel::cmdReadCal_Click()
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
    const QString reply =
        m_link.ask(kindName() + u"? "_s + numbers::numberText(cboChannel->currentIndex()), 0);
    const QStringList fields = reply.split(u',');
    int field = 0;
    for (QLabel *label : {lblValue, lblGain, lblOffset})
        showText(*label, fields.value(field++).simplified());
}

void ManualCalibrationPanel::cmdDefaultSet_Click()
{
    txtValue->setText(u"2.5"_s);
    txtGain->setText(u"1.0"_s);
    txtOffset->setText(u"0.0"_s);
}

void ManualCalibrationPanel::cmdCopy_Click()
{
    txtValue->setText(lblValue->text());
    txtGain->setText(lblGain->text());
    txtOffset->setText(lblOffset->text());
}

} // namespace corvane
