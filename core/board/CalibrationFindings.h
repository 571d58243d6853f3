// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

namespace corvane {

/// What a calibration or scan met that makes its figures doubtful: answers that did not come or
/// hold no number, gains and offsets that no sound channel has.
class CalibrationFindings
{
public:
    void clear() { m_findings.clear(); }
    /// Notes `what` of the channel; the same of another channel joins it.
    void add(int channel, const QString &what);

    [[nodiscard]] bool isEmpty() const { return m_findings.isEmpty(); }
    /// "channel 3: no answer from the ADC at 0.5 V; ...", of several channels "no answer from the
    /// DAC (channels 0 to 2); no number from the meter (channel 5)".
    [[nodiscard]] QString text() const;

    /// What is wrong with a whole reply of value, gain and offset; "%1" is where it came from.
    static QString remarkOnReply(const QString &reply);
    /// What is wrong with a field that the board gave for the table's row: it is missing, no
    /// number, or a gain or offset out of its bounds. Empty: nothing.
    static QString remarkOn(int row, const QString &field);
    /// The same of a gain or offset that is sent.
    static QString remarkOn(int row, double value);

private:
    struct Finding
    {
        QString what;
        QList<int> channels;
    };

    QList<Finding> m_findings;
};

} // namespace corvane
