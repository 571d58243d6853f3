#include "windows/setup/frmPortConfig.h"

#include "core/channels/Module1.h"
#include "core/setup/SetupTexts.h"
#include "devices/SerialPort.h"
#include "windows/widgets/EditableBox.h"
#include "windows/widgets/Naming.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace corvane {

namespace {

struct Field
{
    const char16_t *caption;
    const char16_t *name;
    std::vector<const char16_t *> choices;
};

const std::array<Field, 4> &fieldTable()
{
    static const std::array<Field, 4> table{{
        {u"&Baud Rate",
         u"Baud Rate",
         {u"1200", u"2400", u"4800", u"9600", u"14400", u"19200", u"28800", u"38400", u"56000",
          u"57600", u"115200", u"128000", u"256000"}},
        {u"&Parity",
         u"Parity",
         {PortSettingsText::parities.begin(), PortSettingsText::parities.end()}},
        {u"&Data Bits", u"Data Bits", {u"5", u"6", u"7", u"8"}},
        {u"&Stop Bits", u"Stop Bits", {u"1", u"1.5", u"2"}},
    }};
    return table;
}

struct Preset
{
    const char16_t *caption;
    const char16_t *settings;
};

constexpr std::array presets232{
    Preset{u"&VXM250E", u"19200,N,8,1"},
    Preset{u"&Zephyrine", u"57600,N,8,1"},
    Preset{u"&Marlo", u"19200,N,8,1"},
    Preset{u"KM&X", u"19200,N,8,1"},
};
constexpr std::array presets485{Preset{u"De&fault", u"9600,N,8,1"}};

constexpr int applyAndClose = 0;
constexpr int cancel = 1;
constexpr int applyAndStay = 2;

template <std::size_t count>
QGroupBox *createPresets(const QString &title, const QString &name, const QString &buttonName,
                         const std::array<Preset, count> &presets,
                         std::array<QPushButton *, count> &buttons)
{
    auto *frame = new QGroupBox(title);
    frame->setObjectName(name);
    auto *column = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < count; ++i) {
        const QString settings = QString::fromUtf16(presets[i].settings);
        auto *button =
            named(new QPushButton(QString::fromUtf16(presets[i].caption)), indexed(buttonName, i));
        button->setToolTip(settings);
        button->setAutoDefault(false);
        column->addWidget(button);
        buttons[i] = button;
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
    auto *columns = new QHBoxLayout;
    columns->addWidget(createFields(), 1);
    fraPresets232 = createPresets(u"RS-232 Presets"_s, u"fraPresets232"_s, u"cmdPreset232"_s,
                                  presets232, cmdPreset232);
    fraPresets485 = createPresets(u"RS-485 Presets"_s, u"fraPresets485"_s, u"cmdPreset485"_s,
                                  presets485, cmdPreset485);
    columns->addWidget(fraPresets232);
    columns->addWidget(fraPresets485);
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
        const Field &field = fieldTable()[i];
        auto *box = named(new EditableBox, indexed(u"cboCfg"_s, i), QString::fromUtf16(field.name));
        for (const char16_t *choice : field.choices)
            box->addItem(QString::fromUtf16(choice));
        box->setMaxVisibleItems(box->count());
        form->addRow(QString::fromUtf16(field.caption), box);
        cboCfg[i] = box;
    }
    cboCfg[0]->setCurrentText(u"9600"_s);
    return frame;
}

QLayout *frmPortConfig::createButtons()
{
    static constexpr std::array captions{u"&Apply", u"&Cancel", u"Apply, &Keep Open"};
    for (std::size_t i = 0; i < cmdPortConfig.size(); ++i) {
        auto *button = named(new QPushButton(QString::fromUtf16(captions[i]), this),
                             indexed(u"cmdPortConfig"_s, i));
        button->setAutoDefault(false);
        cmdPortConfig[i] = button;
    }
    cmdPortConfig[applyAndClose]->setDefault(true);
    cmdPortConfig[applyAndStay]->setToolTip(u"Can be pressed once a setting was changed"_s);
    auto *row = new QHBoxLayout;
    row->addWidget(cmdPortConfig[applyAndStay]);
    row->addStretch();
    row->addWidget(cmdPortConfig[applyAndClose]);
    row->addWidget(cmdPortConfig[cancel]);
    return row;
}

void frmPortConfig::connectControls()
{
    for (QComboBox *box : cboCfg)
        connect(box, &QComboBox::editTextChanged, this, &frmPortConfig::cboCfg_Change);
    const auto connectArray = [this](const auto &buttons, void (frmPortConfig::*handler)(int)) {
        for (std::size_t i = 0; i < buttons.size(); ++i)
            connect(buttons[i], &QPushButton::clicked, this,
                    [this, handler, i] { (this->*handler)(static_cast<int>(i)); });
    };
    connectArray(cmdPortConfig, &frmPortConfig::cmdPortConfig_Click);
    connectArray(cmdPreset232, &frmPortConfig::cmdPreset232_Click);
    connectArray(cmdPreset485, &frmPortConfig::cmdPreset485_Click);
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
    setFields(PortSettingsText::parse(m_port.settings()));
    m_applied = fields().toString();
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
    if (index >= 0 && index < static_cast<int>(presets232.size()))
        setFields(PortSettingsText::parse(
            QString::fromUtf16(presets232[static_cast<std::size_t>(index)].settings)));
}

void frmPortConfig::cmdPreset485_Click(int index)
{
    if (index == 0)
        setFields(PortSettingsText::parse(QString::fromUtf16(presets485[0].settings)));
}

void frmPortConfig::cboCfg_Change()
{
    cmdPortConfig[applyAndStay]->setEnabled(fields().toString() != m_applied);
    showState();
}

PortSettingsText frmPortConfig::fields() const
{
    return {.baudRate = cboCfg[0]->currentText(),
            .parity = cboCfg[1]->currentText(),
            .dataBits = cboCfg[2]->currentText(),
            .stopBits = cboCfg[3]->currentText()};
}

void frmPortConfig::setFields(const PortSettingsText &fields)
{
    cboCfg[0]->setEditText(fields.baudRate);
    cboCfg[1]->setEditText(fields.parity);
    cboCfg[2]->setEditText(fields.dataBits);
    cboCfg[3]->setEditText(fields.stopBits);
}

void frmPortConfig::apply()
{
    m_applied = fields().toString();
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
    const auto add = [&lines](const char16_t *meaning, const QString &settings) {
        lines.append(QString::fromUtf16(meaning) + settings);
    };
    const QString applied = m_port.settings();
    if (m_inUse == applied) {
        add(setupTexts::portUsesApplied, applied);
    } else {
        if (m_inUse)
            add(setupTexts::portUses, *m_inUse);
        add(setupTexts::appliedForConnect, applied);
    }
    if (cmdPortConfig[applyAndStay]->isEnabled())
        add(setupTexts::enteredOnly, fields().toString());
    lblSummary->setText(lines.join(u'\n'));
}

} // namespace corvane
