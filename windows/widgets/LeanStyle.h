// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

namespace corvane {

/// The toolkit's style without the picture of the menu bar's extension button. The window is never
/// so narrow that the button shows, and its picture would load every image plug-in at the start.
class LeanStyle : public QProxyStyle
{
public:
    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption *option,
                                     const QWidget *widget) const override
    {
        return icon == SP_ToolBarHorizontalExtensionButton
                   ? QIcon()
                   : QProxyStyle::standardIcon(icon, option, widget);
    }
};

} // namespace corvane
