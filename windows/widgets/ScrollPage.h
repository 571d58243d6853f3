// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScrollArea>

namespace corvane {

/// What a window shows, which scrolls where the window has less room than it needs: on a small
/// screen, or with a large font. It asks for as much room as its content.
class ScrollPage : public QScrollArea
{
    Q_OBJECT

public:
    /// Puts all that the widget has laid out so far into such a page, and the page in its place.
    static void wrap(QWidget &widget);

    ~ScrollPage() override;

    [[nodiscard]] QSize sizeHint() const override;
    /// As its content does by now: a label wraps only once it has a text.
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

private:
    explicit ScrollPage(QWidget &content);

    /// A control that gets the focus by a key comes into sight.
    void showFocus(const QWidget *now);
};

} // namespace corvane
