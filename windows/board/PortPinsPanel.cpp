// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/PortPinsPanel.h"

#include "core/board/BoardLink.h"
#include "core/text/Numbers.h"
#include "windows/widgets/Controls.h"

#include <QGridLayout>

namespace corvane {

using namespace controls;

namespace {

constexpr qint16 beforeReadMs = 250;

} // namespace

PortPinsPanel::PortPinsPanel(BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
{
    QGridLayout *grid = frame(*this, u"Bertran Interface: Port 0 Pins 0-7"_s);
    grid->addWidget(new QLabel(u"1 = Hi = Disable 0 = Lo = Enable"_s), 0, 0, 1, 9);
    grid->addWidget(new QLabel(u"Set Output Hi / Lo"_s), 1, 1, 1, 2);
    grid->addWidget(new QLabel(u"Write 1 or 0"_s), 1, 4, 1, 2);
    grid->addWidget(new QLabel(u"Read"_s), 1, 7, 1, 2);
    for (int pin = 0; pin < pins; ++pin)
        makePin(*grid, pin);
    cmdReadAllIo = exchanging(button(u"Read &All"_s, u"cmdReadAllIo"_s, u"Read all pins"_s, this,
                                     &PortPinsPanel::cmdReadAllIo_Click));
    grid->addWidget(cmdReadAllIo, pins + 2, 7, 1, 2);
    grid->setColumnStretch(4, 1);
    grid->setColumnStretch(7, 1);
    for (const int gap : {3, 6})
        grid->setColumnMinimumWidth(gap, 8);
    spread(*grid, 2, pins + 2);
    connectControls();
}

void PortPinsPanel::makePin(QGridLayout &grid, int pin)
{
    const auto action = [this, pin](const QString &caption, const QString &name,
                                    const QString &accessibleName) {
        return exchanging(smallButton(caption, name, accessibleName, pin));
    };
    cmdH[pin] = action(u"H&i"_s, u"cmdH"_s, u"Set output %1 high"_s);
    cmdL[pin] = action(u"&Lo"_s, u"cmdL"_s, u"Set output %1 low"_s);
    txtPortPinWrite[pin] = entry(2, u"txtPortPinWrite"_s, u"Level to write to pin %1"_s, pin);
    cmdPortPinWrite[pin] = action(u"&Write"_s, u"cmdPortPinWrite"_s, u"Write pin %1"_s);
    lblPortPinRead[pin] = readOut(2, u"lblPortPinRead"_s, u"Level read of pin %1"_s, pin);
    cmdPortPinRead[pin] = action(u"&Read"_s, u"cmdPortPinRead"_s, u"Read pin %1"_s);
    const int row = pin + 2;
    addRow(grid, row, {new QLabel(u"Output %1"_s.arg(pin)), cmdH[pin], cmdL[pin]});
    addRow(grid, row, {txtPortPinWrite[pin], cmdPortPinWrite[pin]}, 4);
    addRow(grid, row, {lblPortPinRead[pin], cmdPortPinRead[pin]}, 7);
}

void PortPinsPanel::connectControls()
{
    cmdH.connectTo(this, &PortPinsPanel::cmdH_Click);
    cmdL.connectTo(this, &PortPinsPanel::cmdL_Click);
    cmdPortPinWrite.connectTo(this, &PortPinsPanel::cmdPortPinWrite_Click);
    cmdPortPinRead.connectTo(this, &PortPinsPanel::cmdPortPinRead_Click);
}

/// Sets the pin and shows what it then reads.
void PortPinsPanel::switchPin(char16_t level, int pin)
{
    if (!cmdH.holds(pin))
        return;
    operate([&] {
        setPin(level, pin);
        readPin(pin);
    });
}

void PortPinsPanel::cmdPortPinWrite_Click(int pin)
{
    if (!txtPortPinWrite.holds(pin))
        return;
    const auto value = numbers::numericValue(txtPortPinWrite[pin]->text());
    if (value == 0 || value == 1)
        operate([&] { setPin(*value == 1 ? high : low, pin); });
}

void PortPinsPanel::cmdPortPinRead_Click(int pin)
{
    if (cmdPortPinRead.holds(pin))
        operate([&] { readPin(pin); });
}

void PortPinsPanel::cmdReadAllIo_Click()
{
    operate([this] {
        for (int pin = 0; pin < pins; ++pin)
            readPin(pin); // nothing once it is stopped
    });
}

void PortPinsPanel::setPin(char16_t level, int pin)
{
    QString command = u"%1 %2"_s.arg(QChar(level)).arg(pin);
    m_link.OutputToSbc(command);
}

void PortPinsPanel::readPin(int pin)
{
    if (m_session.isStopped())
        return;
    QLabel *readOut = lblPortPinRead[pin];
    readOut->clear();
    const QString reply = m_link.ask(u"H? %1"_s.arg(pin), beforeReadMs);
    if (!m_session.isStopped())
        showText(*readOut, reply.trimmed());
}

} // namespace corvane
