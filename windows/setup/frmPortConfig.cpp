// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/setup/frmPortConfig.h"

#include "core/channels/ChannelTraits.h"
#include "core/setup/PortSettingsText.h"
#include "core/setup/SetupTexts.h"
#include "devices/SerialPort.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/EditableBox.h"

#include <QFormLayout>
#include <QGroupBox>

namespace corvane {

namespace {

struct Field
{
    QString caption;
    QStringList choices;
};

const std::array fieldTable{
    Field{u"&Baud Rate"_s,
          {u"1200"_s, u"2400"_s, u"4800"_s, u"9600"_s, u"14400"_s, u"19200"_s, u"28800"_s,
           u"38400"_s, u"56000"_s, u"57600"_s, u"115200"_s, u"128000"_s, u"256000"_s}},
    Field{u"&Parity"_s, portSettingsText::parities},
    Field{u"&Data Bits"_s, {u"5"_s, u"6"_s, u"7"_s, u"8"_s}},
    Field{u"&Stop Bits"_s, {u"1"_s, u"1.5"_s, u"2"_s}},
};

struct Preset
{
    QString caption;
    QString settings;
};

const std::array presets232{
    Preset{u"&VXM250E"_s, u"19200,N,8,1"_s},
    Preset{u"&Zephyrine"_s, u"57600,N,8,1"_s},
    Preset{u"&Marlo"_s, u"19200,N,8,1"_s},
    Preset{u"KM&X"_s, u"19200,N,8,1"_s},
};
const std::array presets485{Preset{u"De&fault"_s, u"9600,N,8,1"_s}};

constexpr int applyAndClose = 0;
constexpr int cancel = 1;
constexpr int applyAndStay = 2;

template <std::size_t count>
QGroupBox *createPresets(const QString &title, const QString &name, const QString &buttonName,
                         const std::array<Preset, count> &presets,
                         ControlArray<QPushButton, count> &buttons)
{
    auto *frame = new QGroupBox(title);
    frame->setObjectName(name);
    auto *column = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < count; ++i) {
        buttons[i] = named(new QPushButton(presets[i].caption), indexed(buttonName, i));
        buttons[i]->setToolTip(presets[i].settings);
        buttons[i]->setAutoDefault(false);
        column->addWidget(buttons[i]);
    }
    column->addStretch();
    return frame;
}

} // namespace

frmPortConfig::frmPortConfig(int channel, SerialPort &port, QWidget *parent)
    : ReopenedDialog(u"frmPortConfig"_s, u"Port Configuration"_s, parent)
    , m_channel(channel)
    , m_port(port)
{
    auto *rows = new QVBoxLayout(this);
    fraPresets232 = createPresets(u"RS-232 Presets"_s, u"fraPresets232"_s, u"cmdPreset232"_s,
                                  presets232, cmdPreset232);
    fraPresets485 = createPresets(u"RS-485 Presets"_s, u"fraPresets485"_s, u"cmdPreset485"_s,
                                  presets485, cmdPreset485);
    auto *columns = controls::row({createFields(), fraPresets232, fraPresets485});
    columns->setStretch(0, 1);
    rows->addLayout(columns, 1);
    lblSummary = new QLabel;
    lblSummary->setObjectName(u"lblSummary"_s);
    lblSummary->setTextFormat(Qt::PlainText);
    lblSummary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblSummary->setAlignment(Qt::AlignTop);
    constexpr int mostLines = 3;
    lblSummary->setMinimumHeight(mostLines * fontMetrics().lineSpacing());
    rows->addWidget(lblSummary);
    rows->addLayout(createButtons());
    finishLayout();
    connectControls();
    portOpened(m_port.isPortOpen());
}

QWidget *frmPortConfig::createFields()
{
    auto *frame =
        new QGroupBox(m_channel == channels::rs485 ? u"RS-485 Settings"_s : u"RS-232 Settings"_s);
    auto *form = new QFormLayout(frame);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (std::size_t i = 0; i < cboCfg.size(); ++i) {
        const Field &field = fieldTable[i];
        cboCfg[i] =
            named(new EditableBox, indexed(u"cboCfg"_s, i), QString(field.caption).remove(u'&'));
        cboCfg[i]->addItems(field.choices);
        cboCfg[i]->setMaxVisibleItems(cboCfg[i]->count());
        form->addRow(field.caption, cboCfg[i]);
    }
    cboCfg[0]->setCurrentText(u"9600"_s);
    return frame;
}

QLayout *frmPortConfig::createButtons()
{
    int index = 0;
    for (const QString &caption : {u"&Apply"_s, u"&Cancel"_s, u"Apply, &Keep Open"_s}) {
        auto *button = named(new QPushButton(caption, this), indexed(u"cmdPortConfig"_s, index));
        button->setAutoDefault(false);
        cmdPortConfig[index++] = button;
    }
    cmdPortConfig[applyAndClose]->setDefault(true);
    cmdPortConfig[applyAndStay]->setToolTip(u"Can be pressed once a setting was changed"_s);
    return controls::row({cmdPortConfig[applyAndStay], nullptr, cmdPortConfig[applyAndClose],
                          cmdPortConfig[cancel]});
}

void frmPortConfig::connectControls()
{
    for (QComboBox *box : cboCfg)
        connect(box, &QComboBox::editTextChanged, this, &frmPortConfig::cboCfg_Change);
    cmdPortConfig.connectTo(this, &frmPortConfig::cmdPortConfig_Click);
    cmdPreset232.connectTo(this, &frmPortConfig::cmdPreset232_Click);
    cmdPreset485.connectTo(this, &frmPortConfig::cmdPreset485_Click);
}

void frmPortConfig::openWindow()
{
    const bool wasOpen = isVisible();
    ReopenedDialog::openWindow();
    if (!wasOpen)
        cboCfg[0]->setFocus();
}

void frmPortConfig::Form_Load()
{
    fraPresets232->setVisible(m_channel == channels::rs232);
    fraPresets485->setVisible(m_channel == channels::rs485);
    enter(m_port.settings());
    m_applied = entered();
    cmdPortConfig[applyAndClose]->setEnabled(true);
    cmdPortConfig[cancel]->setEnabled(true);
    cmdPortConfig[applyAndStay]->setEnabled(false);
    showState();
}

void frmPortConfig::cmdPortConfig_Click(int index)
{
    if (index == applyAndClose || index == applyAndStay)
        apply();
    if (index == applyAndClose || index == cancel)
        close();
}

void frmPortConfig::cmdPreset232_Click(int index)
{
    if (cmdPreset232.holds(index))
        enter(presets232[static_cast<std::size_t>(index)].settings);
}

void frmPortConfig::cmdPreset485_Click(int index)
{
    if (cmdPreset485.holds(index))
        enter(presets485[static_cast<std::size_t>(index)].settings);
}

void frmPortConfig::cboCfg_Change()
{
    cmdPortConfig[applyAndStay]->setEnabled(entered() != m_applied);
    showState();
}

QString frmPortConfig::entered() const
{
    QStringList parts;
    for (const QComboBox *box : cboCfg)
        parts.append(box->currentText());
    return portSettingsText::joined(parts);
}

void frmPortConfig::enter(const QString &settings)
{
    int part = 0;
    for (const QString &text : portSettingsText::parts(settings))
        cboCfg[part++]->setEditText(text);
}

void frmPortConfig::apply()
{
    m_applied = entered();
    m_port.setSettings(m_applied);
    cboCfg_Change();
}

void frmPortConfig::portOpened(bool open)
{
    m_inUse = open ? std::optional(m_port.settings()) : std::nullopt;
    showState();
}

/// Tells what the open port uses, what is applied and what is only entered.
void frmPortConfig::showState()
{
    QStringList lines;
    const QString applied = m_port.settings();
    if (m_inUse == applied) {
        lines << setupTexts::portUsesApplied + applied;
    } else {
        if (m_inUse)
            lines << setupTexts::portUses + *m_inUse;
        lines << setupTexts::appliedForConnect + applied;
    }
    if (cmdPortConfig[applyAndStay]->isEnabled())
        lines << setupTexts::enteredOnly + entered();
    lblSummary->setText(lines.join(u'\n'));
}

} // namespace corvane
