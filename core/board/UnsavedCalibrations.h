// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <array>

namespace corvane {

/// Which channels' gain and offset the board has been given since they were last stored in its
/// EEPROM. Outlives the board window: closing it saves nothing.
class UnsavedCalibrations : public QObject
{
    Q_OBJECT

public:
    static constexpr int channels = 8;

    /// A calibration has put the channel to gain 1 and offset 0 and is not through yet.
    void setUnfinished(int channel) { set(channel, State::Unfinished); }
    /// The channel has its new gain and offset.
    void setChanged(int channel) { set(channel, State::Changed); }
    /// The board was told to store everything. An unfinished channel stays one until it is
    /// calibrated: what is stored of it is no calibration.
    void setSaved();

    [[nodiscard]] bool isEmpty() const;
    /// "Not saved to EEPROM: channels 2, 3"; empty when nothing is unsaved.
    [[nodiscard]] QString text() const;
    /// "calibration unfinished: channel 4"; empty when each one is through.
    [[nodiscard]] QString unfinishedText() const;

Q_SIGNALS:
    /// The text is another one.
    void changed(const QString &text);

private:
    enum class State { Saved, Changed, Unfinished };

    void set(int channel, State state);
    [[nodiscard]] QString listOf(State state) const;

    std::array<State, channels> m_states{};
};

} // namespace corvane
