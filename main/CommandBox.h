#pragma once

#include <QComboBox>

namespace corvane {

/// The command entry of a Channel with the commands sent before, oldest first. What is sent and
/// when is left to the Channel.
class CommandBox : public QComboBox
{
public:
    static constexpr int historyLimit = 21;

    explicit CommandBox(QWidget *parent = nullptr);

    /// Notes the command in the entry. A full history drops the oldest one first, and a command
    /// that is there already stays where it is.
    void remember();
};

} // namespace corvane
