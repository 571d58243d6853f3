#include "windows/board/ManualCalibrationPanel.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
#include "core/text/Numbers.h"
#include "windows/widgets/Controls.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>

#include <array>

namespace corvane {

using namespace controls;

ManualCalibrationPanel::ManualCalibrationPanel(Kind kind, BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
    , m_kind(kind)
{
    makeEntries();
    makeReadOuts();
    arrange();
    connect(cmdSetCal, &QPushButton::clicked, this, &ManualCalibrationPanel::cmdSetCal_Click);
    connect(cmdReadCal, &QPushButton::clicked, this, &ManualCalibrationPanel::cmdReadCal_Click);
    connect(cmdDefaultSet, &QPushButton::clicked, this,
            &ManualCalibrationPanel::cmdDefaultSet_Click);
    connect(cmdCopy, &QPushButton::clicked, this, &ManualCalibrationPanel::cmdCopy_Click);
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

void ManualCalibrationPanel::makeEntries()
{
    cboChannelSet = channelBox(u"cboChannelSet"_s, u"%1 channel to set"_s);
    const auto entryFor = [this](const QString &name, const QString &what) {
        return entry(6, indexed(name, m_kind), u"%1 %2 to set"_s.arg(kindName(), what));
    };
    txtValue = entryFor(u"txtValue"_s, u"value"_s);
    txtGain = entryFor(u"txtGain"_s, u"gain"_s);
    txtOffset = entryFor(u"txtOffset"_s, u"offset"_s);
    const QString caption = m_kind == Dac ? u"Set &DAC"_s : u"Set &ADC"_s;
    cmdSetCal = exchanging(button(caption, indexed(u"cmdSetCal"_s, m_kind),
                                  u"Set calibration of the %1"_s.arg(kindName())));
    cmdDefaultSet = button(u"De&fault Settings"_s, indexed(u"cmdDefaultSet"_s, m_kind),
                           u"Fill in the %1 default settings"_s.arg(kindName()));
}

void ManualCalibrationPanel::makeReadOuts()
{
    cboChannel = channelBox(u"cboChannel"_s, u"%1 channel to read"_s);
    const auto labelFor = [this](const QString &name, const QString &what) {
        return readOut(6, indexed(name, m_kind), u"%1 %2 read"_s.arg(kindName(), what));
    };
    lblValue = labelFor(u"lblValue"_s, u"value"_s);
    lblGain = labelFor(u"lblGain"_s, u"gain"_s);
    lblOffset = labelFor(u"lblOffset"_s, u"offset"_s);
    cmdReadCal = exchanging(button(u"&Read %1"_s.arg(kindName()), indexed(u"cmdReadCal"_s, m_kind),
                                   u"Read calibration of the %1"_s.arg(kindName())));
    cmdCopy = button(u"Cop&y"_s, indexed(u"cmdCopy"_s, m_kind),
                     u"Copy the read %1 values into the entries"_s.arg(kindName()));
}

/// One row to set, one to read, under common headings.
void ManualCalibrationPanel::arrange()
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    auto *box = new QGroupBox(u"%1 Calibration"_s.arg(kindName()));
    outer->addWidget(box);
    auto *grid = new QGridLayout(box);
    const QStringList headings = {u"Channel"_s, u"Value"_s, u"Gain"_s, u"Offset"_s};
    for (int column = 0; column < headings.size(); ++column)
        grid->addWidget(new QLabel(headings[column]), 0, column);
    const std::array<QWidget *, 6> setRow = {cboChannelSet, txtValue,  txtGain,
                                             txtOffset,     cmdSetCal, cmdDefaultSet};
    const std::array<QWidget *, 6> readRow = {cboChannel, lblValue,   lblGain,
                                              lblOffset,  cmdReadCal, cmdCopy};
    for (size_t column = 0; column < setRow.size(); ++column) {
        grid->addWidget(setRow[column], 1, static_cast<int>(column));
        grid->addWidget(readRow[column], 2, static_cast<int>(column));
    }
    for (int column = 1; column <= 3; ++column)
        grid->setColumnStretch(column, 1);
    for (size_t column = 1; column < setRow.size(); ++column)
        setTabOrder(setRow[column - 1], setRow[column]);
    setTabOrder(setRow.back(), readRow.front());
    setTabOrder(cboChannel, cmdReadCal);
    setTabOrder(cmdReadCal, cmdCopy);
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
    showText(*lblValue, fields.value(0).simplified());
    showText(*lblGain, fields.value(1).simplified());
    showText(*lblOffset, fields.value(2).simplified());
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
