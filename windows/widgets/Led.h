// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace corvane {

/// An activity LED: a filled circle, bright or dark green. Keeps its place in the layout while it
/// is hidden.
class Led : public QWidget
{
    Q_OBJECT
    /// "bright" or "dark".
    Q_PROPERTY(QString text READ text)

public:
    static constexpr QRgb brightGreen = 0xFF00; ///< 65280
    static constexpr QRgb darkGreen = 0xC000;   ///< 49152, idle

    explicit Led(QWidget *parent = nullptr);

    [[nodiscard]] QRgb colour() const { return m_colour; }
    [[nodiscard]] bool isBright() const { return m_colour == brightGreen; }
    [[nodiscard]] QString text() const;
    void setBright(bool bright);

    /// The small light on a Channel's tab: filled while the Channel is open.
    [[nodiscard]] static QIcon tabMark(bool open);

    [[nodiscard]] QSize sizeHint() const override { return {18, 18}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRgb m_colour = darkGreen;
};

} // namespace corvane
