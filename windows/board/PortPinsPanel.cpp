#include "windows/board/PortPinsPanel.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
#include "core/text/Numbers.h"
#include "windows/widgets/Controls.h"

#include <QGridLayout>
#include <QGroupBox>

namespace corvane {

using namespace controls;

namespace {

constexpr qint16 beforeReadMs = 250;
constexpr char16_t high = u'H';
constexpr char16_t low = u'L';

bool isPin(int pin)
{
    return pin >= 0 && pin < PortPinsPanel::pins;
}

} // namespace

PortPinsPanel::PortPinsPanel(BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    auto *box = new QGroupBox(u"Bertran Interface: Port 0 Pins 0-7"_s);
    outer->addWidget(box);
    auto *grid = new QGridLayout(box);
    grid->addWidget(new QLabel(u"1 = Hi = Disable 0 = Lo = Enable"_s), 0, 0, 1, 9);
    grid->addWidget(new QLabel(u"Set Output Hi / Lo"_s), 1, 1, 1, 2);
    grid->addWidget(new QLabel(u"Write 1 or 0"_s), 1, 4, 1, 2);
    grid->addWidget(new QLabel(u"Read"_s), 1, 7, 1, 2);
    for (int pin = 0; pin < pins; ++pin)
        makePin(*grid, pin);
    cmdReadAllIo = exchanging(button(u"Read &All"_s, u"cmdReadAllIo"_s, u"Read all pins"_s));
    grid->addWidget(cmdReadAllIo, pins + 2, 7, 1, 2);
    grid->setColumnStretch(4, 1);
    grid->setColumnStretch(7, 1);
    for (const int gap : {3, 6})
        grid->setColumnMinimumWidth(gap, 8);
    grid->setRowStretch(pins + 3, 1);
    connectControls();
}

void PortPinsPanel::makePin(QGridLayout &grid, int pin)
{
    const auto at = static_cast<size_t>(pin);
    const auto name = [pin](const char16_t *control) {
        return indexed(QString::fromUtf16(control), pin);
    };
    cmdH[at] = exchanging(smallButton(u"H&i"_s, name(u"cmdH"), u"Set output %1 high"_s.arg(pin)));
    cmdL[at] = exchanging(smallButton(u"&Lo"_s, name(u"cmdL"), u"Set output %1 low"_s.arg(pin)));
    txtPortPinWrite[at] =
        entry(2, name(u"txtPortPinWrite"), u"Level to write to pin %1"_s.arg(pin));
    cmdPortPinWrite[at] =
        exchanging(smallButton(u"&Write"_s, name(u"cmdPortPinWrite"), u"Write pin %1"_s.arg(pin)));
    lblPortPinRead[at] = readOut(2, name(u"lblPortPinRead"), u"Level read of pin %1"_s.arg(pin));
    cmdPortPinRead[at] =
        exchanging(smallButton(u"&Read"_s, name(u"cmdPortPinRead"), u"Read pin %1"_s.arg(pin)));
    const int row = pin + 2;
    grid.addWidget(new QLabel(u"Output %1"_s.arg(pin)), row, 0);
    grid.addWidget(cmdH[at], row, 1);
    grid.addWidget(cmdL[at], row, 2);
    grid.addWidget(txtPortPinWrite[at], row, 4);
    grid.addWidget(cmdPortPinWrite[at], row, 5);
    grid.addWidget(lblPortPinRead[at], row, 7);
    grid.addWidget(cmdPortPinRead[at], row, 8);
}

void PortPinsPanel::connectControls()
{
    using Handler = void (PortPinsPanel::*)(int);
    const std::array<std::pair<const std::array<QPushButton *, pins> *, Handler>, 4> buttons = {{
        {&cmdH, &PortPinsPanel::cmdH_Click},
        {&cmdL, &PortPinsPanel::cmdL_Click},
        {&cmdPortPinWrite, &PortPinsPanel::cmdPortPinWrite_Click},
        {&cmdPortPinRead, &PortPinsPanel::cmdPortPinRead_Click},
    }};
    for (const auto &[array, handler] : buttons) {
        for (int pin = 0; pin < pins; ++pin)
            connect((*array)[static_cast<size_t>(pin)], &QPushButton::clicked, this,
                    [this, handler = handler, pin] { (this->*handler)(pin); });
    }
    connect(cmdReadAllIo, &QPushButton::clicked, this, &PortPinsPanel::cmdReadAllIo_Click);
}

void PortPinsPanel::cmdH_Click(int pin)
{
    switchPin(high, pin);
}

void PortPinsPanel::cmdL_Click(int pin)
{
    switchPin(low, pin);
}

/// Sets the pin and shows what it then reads.
void PortPinsPanel::switchPin(char16_t level, int pin)
{
    if (!isPin(pin))
        return;
    const auto operation = m_session.begin();
    if (!operation)
        return;
    setPin(level, pin);
    readPin(pin);
}

void PortPinsPanel::cmdPortPinWrite_Click(int pin)
{
    if (!isPin(pin))
        return;
    const auto value = numbers::numericValue(txtPortPinWrite[static_cast<size_t>(pin)]->text());
    if (!value || (*value != 0 && *value != 1))
        return;
    if (const auto operation = m_session.begin())
        setPin(*value == 1 ? high : low, pin);
}

void PortPinsPanel::cmdPortPinRead_Click(int pin)
{
    if (!isPin(pin))
        return;
    if (const auto operation = m_session.begin())
        readPin(pin);
}

void PortPinsPanel::cmdReadAllIo_Click()
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
    for (int pin = 0; pin < pins && !m_session.isStopped(); ++pin)
        readPin(pin);
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
    QLabel *readOut = lblPortPinRead[static_cast<size_t>(pin)];
    readOut->clear();
    const QString reply = m_link.ask(u"H? %1"_s.arg(pin), beforeReadMs);
    if (!m_session.isStopped())
        showText(*readOut, reply.trimmed());
}

} // namespace corvane
