// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/DigitalIoPanel.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardTexts.h"
#include "core/text/Numbers.h"
#include "windows/board/BinaryCalculator.h"
#include "windows/board/DigitalTestsPanel.h"
#include "windows/board/PortPinsPanel.h"
#include "windows/widgets/Controls.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>

namespace corvane {

using namespace controls;

namespace {

constexpr qint16 beforeReadMs = 25;
constexpr int largestValue = 255;

const QString directionRegister = u"PORT:DIR"_s;
const QString dataRegister = u"PORT:DATA"_s;

} // namespace

DigitalIoPanel::DigitalIoPanel(BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
    , pins(new PortPinsPanel(link, session))
    , calculator(new BinaryCalculator)
    , tests(new DigitalTestsPanel(link, session))
{
    auto *layout = new QGridLayout(this);
    layout->addWidget(makePorts(), 0, 0);
    layout->addWidget(tests, 1, 0);
    layout->addWidget(calculator, 2, 0);
    layout->addWidget(pins, 0, 1, 3, 1);
    layout->setRowStretch(0, 1);
    layout->setColumnStretch(0, 3);
    layout->setColumnStretch(1, 2);
    connectControls();
    optIoUnits_Click(Hex);
}

QWidget *DigitalIoPanel::makePorts()
{
    auto *box = new QGroupBox(u"Ports"_s);
    auto *rows = new QVBoxLayout(box);
    rows->addLayout(makeUnits());
    auto *grid = new QGridLayout;
    rows->addLayout(grid);
    grid->addWidget(new QLabel(u"Direction (FF or 255 drives)"_s), 0, 1, 1, 4);
    grid->addWidget(new QLabel(u"Data"_s), 0, 6, 1, 4);
    grid->setColumnMinimumWidth(5, 16);
    for (int port = 0; port < ports; ++port)
        makePort(*grid, port);
    spread(*grid, 1, ports);
    rows->setStretch(1, 1);
    for (const int column : {1, 3, 6, 8})
        grid->setColumnStretch(column, 1);
    return box;
}

QLayout *DigitalIoPanel::makeUnits()
{
    optIoUnits[Hex] = named(new QRadioButton(u"&Hexadecimal"_s), indexed(u"optIoUnits"_s, Hex),
                            u"Port units hexadecimal"_s);
    optIoUnits[Decimal] = named(new QRadioButton(u"&Decimal"_s), indexed(u"optIoUnits"_s, Decimal),
                                u"Port units decimal"_s);
    lblIoRange = named(new QLabel, u"lblIoRange"_s, u"Range of the port entries"_s);
    chkBertan = named(new QCheckBox(u"Use &Bertan command set"_s), u"chkBertan"_s,
                      u"Use Bertan command set"_s);
    chkBertan->setToolTip(u"A note only: the port commands are the same with either set."_s);
    auto *units = row({optIoUnits[Hex], optIoUnits[Decimal], lblIoRange, nullptr, chkBertan});
    units->insertSpacing(2, 16);
    return units;
}

void DigitalIoPanel::makePort(QGridLayout &grid, int port)
{
    const auto action = [this, port](const QString &caption, const QString &name,
                                     const QString &accessibleName) {
        return exchanging(smallButton(caption, name, accessibleName, port));
    };
    txtDirIo[port] = entry(3, u"txtDirIo"_s, u"Direction to write to port %1"_s, port);
    txtDirIoRead[port] = entry(3, u"txtDirIoRead"_s, u"Direction read of port %1"_s, port);
    txtDirIoRead[port]->setReadOnly(true);
    QPalette readOnly = txtDirIoRead[port]->palette();
    readOnly.setBrush(QPalette::Base, readOnly.window());
    txtDirIoRead[port]->setPalette(readOnly);
    txtWriteIo[port] = entry(3, u"txtWriteIo"_s, u"Data to write to port %1"_s, port);
    lblReadIo[port] = readOut(3, u"lblReadIo"_s, u"Data read of port %1"_s, port);
    cmdWriteDirIo[port] =
        action(u"&Write"_s, u"cmdWriteDirIo"_s, u"Write the direction of port %1"_s);
    cmdReadDirIo[port] = action(u"&Read"_s, u"cmdReadDirIo"_s, u"Read the direction of port %1"_s);
    cmdWriteIo[port] = action(u"&Write"_s, u"cmdWriteIo"_s, u"Write the data of port %1"_s);
    cmdReadIo[port] = action(u"&Read"_s, u"cmdReadIo"_s, u"Read the data of port %1"_s);
    addRow(grid, port + 1,
           {new QLabel(u"Port %1"_s.arg(port)), txtDirIo[port], cmdWriteDirIo[port],
            txtDirIoRead[port], cmdReadDirIo[port]});
    addRow(grid, port + 1, {txtWriteIo[port], cmdWriteIo[port], lblReadIo[port], cmdReadIo[port]},
           6);
}

void DigitalIoPanel::connectControls()
{
    cmdWriteDirIo.connectTo(this, &DigitalIoPanel::cmdWriteDirIo_Click);
    cmdReadDirIo.connectTo(this, &DigitalIoPanel::cmdReadDirIo_Click);
    cmdWriteIo.connectTo(this, &DigitalIoPanel::cmdWriteIo_Click);
    cmdReadIo.connectTo(this, &DigitalIoPanel::cmdReadIo_Click);
    optIoUnits.connectTo(this, &DigitalIoPanel::optIoUnits_Click);
}

void DigitalIoPanel::optIoUnits_Click(int units)
{
    if (units != Hex && units != Decimal)
        return;
    m_units = units;
    const QSignalBlocker once(optIoUnits[units]);
    optIoUnits[units]->setChecked(true);
    lblIoRange->setText(units == Hex ? boardTexts::ioRangeHex : boardTexts::ioRangeDecimal);
    if (units == Hex)
        chkBertan->setChecked(false);
    const QString fullScale = units == Hex ? u"FF"_s : u"255"_s;
    for (int port = 0; port < ports; ++port) {
        txtDirIo[port]->setText(fullScale);
        txtDirIoRead[port]->setText(fullScale);
        txtWriteIo[port]->setText(fullScale);
        lblReadIo[port]->setText(fullScale);
    }
}

void DigitalIoPanel::cmdWriteDirIo_Click(int port)
{
    if (txtDirIo.holds(port))
        operate([&] { writeRegister(directionRegister, port, txtDirIo[port]->text()); });
}

void DigitalIoPanel::cmdWriteIo_Click(int port)
{
    if (txtWriteIo.holds(port))
        operate([&] { writeRegister(dataRegister, port, txtWriteIo[port]->text()); });
}

void DigitalIoPanel::cmdReadDirIo_Click(int port)
{
    if (txtDirIoRead.holds(port))
        operate([&] { txtDirIoRead[port]->setText(readRegister(directionRegister, port)); });
}

void DigitalIoPanel::cmdReadIo_Click(int port)
{
    if (lblReadIo.holds(port))
        operate([&] { lblReadIo[port]->setText(readRegister(dataRegister, port)); });
}

void DigitalIoPanel::writeRegister(const QString &name, int port, const QString &text)
{
    const auto value = registerValue(text);
    if (!value) {
        m_session.say(boardTexts::invalidData);
        return;
    }
    QString command = u"%1 %2,%3"_s.arg(name, QString::number(port), *value);
    m_link.OutputToSbc(command);
}

std::optional<QString> DigitalIoPanel::registerValue(const QString &text) const
{
    if (m_units == Decimal) {
        const auto value = numbers::numericValue(text);
        return value && *value >= 0 && *value <= largestValue ? std::optional(text) : std::nullopt;
    }
    const auto value = numbers::fromHex(text);
    if (!value || *value > largestValue)
        return std::nullopt;
    if (*value == 0 && text != u"0"_s && text != u"00"_s)
        return std::nullopt;
    return QString::number(*value);
}

QString DigitalIoPanel::readRegister(const QString &name, int port)
{
    const QString reply = m_link.ask(u"%1? %2"_s.arg(name).arg(port), beforeReadMs);
    if (!numbers::startsWithNumber(reply))
        return {};
    return m_units == Hex ? numbers::toHex(numbers::leadingInteger(reply))
                          : QString::number(numbers::leadingNumber(reply), 'g', 15);
}

} // namespace corvane
