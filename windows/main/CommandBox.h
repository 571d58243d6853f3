#pragma once

#include "windows/widgets/EditableBox.h"

namespace corvane {

/// The command entry of a Channel with the commands sent before, oldest first. What is sent and
/// when is left to the Channel.
class CommandBox : public EditableBox
{
public:
    static constexpr int historyLimit = 21;

    explicit CommandBox(QWidget *parent = nullptr);

    /// Notes the command in the entry. A full history drops the oldest one first, and a command
    /// that is there already stays where it is.
    void remember();

    /// The same whatever the history holds. A size adjust policy would say so too, but makes the
    /// pop-up list at once.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

} // namespace corvane
