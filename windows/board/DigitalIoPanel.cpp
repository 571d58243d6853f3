#include "windows/board/DigitalIoPanel.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
#include "core/board/BoardTexts.h"
#include "core/text/Numbers.h"
#include "windows/board/BinaryCalculator.h"
#include "windows/board/DigitalTestsPanel.h"
#include "windows/board/PortPinsPanel.h"
#include "windows/widgets/Controls.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QRadioButton>

namespace corvane {

using namespace controls;

namespace {

constexpr qint16 beforeReadMs = 25;
constexpr int largestValue = 255;

const QString directionRegister = u"PORT:DIR"_s;
const QString dataRegister = u"PORT:DATA"_s;

bool isPort(int port)
{
    return port >= 0 && port < DigitalIoPanel::ports;
}

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
    layout->setRowStretch(3, 1);
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
    for (const int column : {1, 3, 6, 8})
        grid->setColumnStretch(column, 1);
    return box;
}

QLayout *DigitalIoPanel::makeUnits()
{
    auto *row = new QHBoxLayout;
    const QStringList captions = {u"&Hexadecimal"_s, u"&Decimal"_s};
    for (int units = Hex; units <= Decimal; ++units) {
        auto *option = new QRadioButton(captions[units]);
        optIoUnits[static_cast<size_t>(units)] =
            named(option, indexed(u"optIoUnits"_s, units),
                  u"Port units %1"_s.arg(units == Hex ? u"hexadecimal"_s : u"decimal"_s));
        row->addWidget(option);
    }
    lblIoRange = named(new QLabel, u"lblIoRange"_s, u"Range of the port entries"_s);
    row->addSpacing(16);
    row->addWidget(lblIoRange);
    row->addStretch();
    chkBertan = named(new QCheckBox(u"Use &Bertan command set"_s), u"chkBertan"_s,
                      u"Use Bertan command set"_s);
    chkBertan->setToolTip(u"A note only: the port commands are the same with either set."_s);
    row->addWidget(chkBertan);
    return row;
}

void DigitalIoPanel::makePort(QGridLayout &grid, int port)
{
    const auto at = static_cast<size_t>(port);
    const auto name = [port](const char16_t *control) {
        return indexed(QString::fromUtf16(control), port);
    };
    txtDirIo[at] = entry(3, name(u"txtDirIo"), u"Direction to write to port %1"_s.arg(port));
    txtDirIoRead[at] = entry(3, name(u"txtDirIoRead"), u"Direction read of port %1"_s.arg(port));
    txtDirIoRead[at]->setReadOnly(true);
    QPalette readOnly = txtDirIoRead[at]->palette();
    readOnly.setBrush(QPalette::Base, readOnly.window());
    txtDirIoRead[at]->setPalette(readOnly);
    txtWriteIo[at] = entry(3, name(u"txtWriteIo"), u"Data to write to port %1"_s.arg(port));
    lblReadIo[at] = readOut(3, name(u"lblReadIo"), u"Data read of port %1"_s.arg(port));
    cmdWriteDirIo[at] = exchanging(smallButton(u"&Write"_s, name(u"cmdWriteDirIo"),
                                               u"Write the direction of port %1"_s.arg(port)));
    cmdReadDirIo[at] = exchanging(smallButton(u"&Read"_s, name(u"cmdReadDirIo"),
                                              u"Read the direction of port %1"_s.arg(port)));
    cmdWriteIo[at] = exchanging(
        smallButton(u"&Write"_s, name(u"cmdWriteIo"), u"Write the data of port %1"_s.arg(port)));
    cmdReadIo[at] = exchanging(
        smallButton(u"&Read"_s, name(u"cmdReadIo"), u"Read the data of port %1"_s.arg(port)));
    const int row = port + 1;
    grid.addWidget(new QLabel(u"Port %1"_s.arg(port)), row, 0);
    grid.addWidget(txtDirIo[at], row, 1);
    grid.addWidget(cmdWriteDirIo[at], row, 2);
    grid.addWidget(txtDirIoRead[at], row, 3);
    grid.addWidget(cmdReadDirIo[at], row, 4);
    grid.addWidget(txtWriteIo[at], row, 6);
    grid.addWidget(cmdWriteIo[at], row, 7);
    grid.addWidget(lblReadIo[at], row, 8);
    grid.addWidget(cmdReadIo[at], row, 9);
}

void DigitalIoPanel::connectControls()
{
    using Handler = void (DigitalIoPanel::*)(int);
    const std::array<std::pair<const std::array<QPushButton *, ports> *, Handler>, 4> buttons = {{
        {&cmdWriteDirIo, &DigitalIoPanel::cmdWriteDirIo_Click},
        {&cmdReadDirIo, &DigitalIoPanel::cmdReadDirIo_Click},
        {&cmdWriteIo, &DigitalIoPanel::cmdWriteIo_Click},
        {&cmdReadIo, &DigitalIoPanel::cmdReadIo_Click},
    }};
    for (const auto &[array, handler] : buttons) {
        for (int port = 0; port < ports; ++port)
            connect((*array)[static_cast<size_t>(port)], &QPushButton::clicked, this,
                    [this, handler = handler, port] { (this->*handler)(port); });
    }
    for (int units = Hex; units <= Decimal; ++units)
        connect(optIoUnits[static_cast<size_t>(units)], &QRadioButton::toggled, this,
                [this, units](bool on) {
                    if (on)
                        optIoUnits_Click(units);
                });
}

void DigitalIoPanel::optIoUnits_Click(int units)
{
    if (units != Hex && units != Decimal)
        return;
    m_units = units;
    const QSignalBlocker once(optIoUnits[static_cast<size_t>(units)]);
    optIoUnits[static_cast<size_t>(units)]->setChecked(true);
    lblIoRange->setText(units == Hex ? boardTexts::ioRangeHex : boardTexts::ioRangeDecimal);
    if (units == Hex)
        chkBertan->setChecked(false);
    const QString fullScale = units == Hex ? u"FF"_s : u"255"_s;
    for (size_t port = 0; port < ports; ++port) {
        txtDirIo[port]->setText(fullScale);
        txtDirIoRead[port]->setText(fullScale);
        txtWriteIo[port]->setText(fullScale);
        lblReadIo[port]->setText(fullScale);
    }
}

void DigitalIoPanel::cmdWriteDirIo_Click(int port)
{
    if (isPort(port))
        writeRegister(directionRegister, port, txtDirIo[static_cast<size_t>(port)]->text());
}

void DigitalIoPanel::cmdWriteIo_Click(int port)
{
    if (isPort(port))
        writeRegister(dataRegister, port, txtWriteIo[static_cast<size_t>(port)]->text());
}

void DigitalIoPanel::cmdReadDirIo_Click(int port)
{
    if (!isPort(port))
        return;
    if (const auto shown = readRegister(directionRegister, port))
        txtDirIoRead[static_cast<size_t>(port)]->setText(*shown);
}

void DigitalIoPanel::cmdReadIo_Click(int port)
{
    if (!isPort(port))
        return;
    if (const auto shown = readRegister(dataRegister, port))
        lblReadIo[static_cast<size_t>(port)]->setText(*shown);
}

void DigitalIoPanel::writeRegister(const QString &name, int port, const QString &text)
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
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

std::optional<QString> DigitalIoPanel::readRegister(const QString &name, int port)
{
    const auto operation = m_session.begin();
    if (!operation)
        return std::nullopt;
    const QString reply = m_link.ask(u"%1? %2"_s.arg(name).arg(port), beforeReadMs);
    if (!numbers::startsWithNumber(reply)) // blank: nothing was read
        return QString();
    return m_units == Hex ? numbers::toHex(numbers::leadingInteger(reply))
                          : QString::number(numbers::leadingNumber(reply), 'g', 15);
}

} // namespace corvane
