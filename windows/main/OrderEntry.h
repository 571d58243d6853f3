// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/OrderText.h"

#include <QWidget>

#include <functional>

class QComboBox;
class QLabel;
class QStackedWidget;

namespace corvane {

/// Enters one order for the bench: a choice of orders and, for each, fields for what may follow its
/// word. It knows no order by name; giving it to the bench is left to its window.
class OrderEntry : public QWidget
{
    Q_OBJECT

public:
    /// What is in force when an order's arguments are left out, a blank between each.
    using Presets = std::function<QString(const QString &word)>;

    /// The choice is "cboNAME"; a field of an order "txtNAME_word_0", "cboNAME_word_1",
    /// "chkNAME_word_2" by its kind and place.
    OrderEntry(const QString &name, const QString &accessibleName,
               std::vector<bench::OrderText> choices, const Presets &presets = {},
               QWidget *parent = nullptr);

    /// The order as entered, as in "slow 500 once". A value that is left out is the preset one.
    [[nodiscard]] QString text() const;
    /// Shows what the chosen order does, and its fields.
    void cboOrder_Change();

    QComboBox *cboOrder = nullptr;
    QLabel *lblAbout = nullptr;

private:
    /// What one field adds to the order; empty: nothing.
    using Field = std::function<QString()>;

    struct Control
    {
        QLatin1String kind; ///< "txt", "cbo", "chk"
        QWidget *widget;
        Field field;
    };

    QWidget *createFields(const bench::OrderText &choice, const QStringList &presets);
    static Control createControl(const QString &argument, const QString &preset);

    std::vector<bench::OrderText> m_choices;
    QStackedWidget *m_pages = nullptr; ///< a page of fields for each choice
    std::vector<std::vector<Field>> m_fields;
};

} // namespace corvane
