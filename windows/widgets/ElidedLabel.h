// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

namespace corvane {

/// A line of plain text that takes the room it is given and never asks for more: what has no room
/// gives way to "..." in its middle. text() stays whole, and all of it can be selected and copied.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    /// Shows a text that may be long: whole it is in the tool tip and for screen readers.
    void showLong(const QString &text);

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }

protected:
    /// The text as it is painted in a width.
    [[nodiscard]] virtual QString elided(int width) const;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace corvane
