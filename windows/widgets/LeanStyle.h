// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>
#include <QProxyStyle>

namespace corvane {

/// The toolkit's style without the picture of the menu bar's extension button. The window is never
/// so narrow that the button shows, and its picture would load every image plug-in at the start.
/// The hints in empty entries are the text's colour at half its strength: the themes of some dark
/// desktops leave them black.
class LeanStyle : public QProxyStyle
{
public:
    using QProxyStyle::polish;

    void polish(QPalette &palette) override
    {
        QProxyStyle::polish(palette);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QColor hint = palette.color(group, QPalette::Text);
            hint.setAlpha(128);
            palette.setColor(group, QPalette::PlaceholderText, hint);
        }
    }

    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption *option,
                                     const QWidget *widget) const override
    {
        return icon == SP_ToolBarHorizontalExtensionButton
                   ? QIcon()
                   : QProxyStyle::standardIcon(icon, option, widget);
    }
};

} // namespace corvane
