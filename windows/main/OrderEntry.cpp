// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/OrderEntry.h"

#include "windows/widgets/Naming.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>

namespace corvane {

OrderEntry::OrderEntry(const QString &name, const QString &accessibleName,
                       std::vector<bench::OrderText> choices, const Presets &presets,
                       QWidget *parent)
    : QWidget(parent)
    , m_choices(std::move(choices))
    , m_pages(new QStackedWidget)
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    cboOrder = named(new QComboBox, u"cbo"_s + name, accessibleName);
    lblAbout = named(new QLabel, u"lbl"_s + name, accessibleName + u": what it does"_s);
    for (const bench::OrderText &choice : m_choices) {
        cboOrder->addItem(choice.word);
        const QString preset = presets ? presets(choice.word) : QString();
        m_pages->addWidget(createFields(choice, preset.split(u' ', Qt::SkipEmptyParts)));
    }
    auto *row = new QHBoxLayout;
    row->addWidget(cboOrder);
    row->addWidget(m_pages, 1);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->addLayout(row);
    rows->addWidget(lblAbout);
    connect(cboOrder, &QComboBox::currentIndexChanged, this, &OrderEntry::cboOrder_Change);
    cboOrder_Change();
}

QWidget *OrderEntry::createFields(const bench::OrderText &choice, const QStringList &presets)
{
    auto *page = new QWidget;
    auto *row = new QHBoxLayout(page);
    row->setContentsMargins({});
    std::vector<Field> &fields = m_fields.emplace_back();
    const QString arguments = QString(choice.arguments).remove(u'[').remove(u']');
    for (const QString &argument : arguments.split(u' ', Qt::SkipEmptyParts)) {
        const auto place = static_cast<qsizetype>(fields.size());
        const Control made = createControl(argument, presets.value(place));
        const QString name = made.kind + objectName() + u'_' + choice.word;
        row->addWidget(
            named(made.widget, indexed(name, place), accessibleName() + u' ' + argument));
        fields.push_back(made.field);
    }
    row->addStretch();
    return page;
}

OrderEntry::Control OrderEntry::createControl(const QString &argument, const QString &preset)
{
    if (argument.contains(u'|')) {
        auto *box = new QComboBox;
        box->addItems(argument.split(u'|'));
        return {"cbo"_L1, box, [box] { return box->currentText(); }};
    }
    if (argument.isLower()) {
        auto *box = new QCheckBox(argument);
        return {"chk"_L1, box, [box] { return box->isChecked() ? box->text() : QString(); }};
    }
    auto *entry = new QLineEdit(preset);
    entry->setPlaceholderText(argument);
    entry->setToolTip(argument);
    return {"txt"_L1, entry, [entry, preset] {
                const QString text = entry->text().trimmed();
                return text.isEmpty() ? preset : text;
            }};
}

void OrderEntry::cboOrder_Change()
{
    const int index = cboOrder->currentIndex();
    m_pages->setCurrentIndex(index);
    lblAbout->setText(m_choices.at(static_cast<size_t>(index)).about);
}

QString OrderEntry::text() const
{
    QStringList words{cboOrder->currentText()};
    for (const Field &field : m_fields.at(static_cast<size_t>(cboOrder->currentIndex()))) {
        if (const QString word = field(); !word.isEmpty())
            words.append(word);
    }
    return words.join(u' ');
}

} // namespace corvane
