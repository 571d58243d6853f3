// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/widgets/EditableBox.h"

namespace corvane {

/// The command entry of a Channel with the commands sent before, oldest first. What is sent and
/// when is left to the Channel.
class CommandBox : public EditableBox
{
public:
    explicit CommandBox(QWidget *parent = nullptr);

    void showCommand(const QString &command);
    /// The commands sent before, and the one that was sent last.
    void showHistory(const QStringList &history, const QString &last);

    /// The same whatever the history holds. A size adjust policy would say so too, but makes the
    /// pop-up list at once.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

} // namespace corvane
