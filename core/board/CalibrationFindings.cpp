// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/CalibrationFindings.h"

#include "core/board/BoardTexts.h"
#include "core/board/CalibrationTable.h"
#include "core/text/Numbers.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double leastGain = 0.5;
constexpr double mostGain = 2;
constexpr double mostOffset = 0.5;

} // namespace

void CalibrationFindings::add(int channel, const QString &what)
{
    const auto known = std::find_if(m_findings.begin(), m_findings.end(),
                                    [&what](const Finding &each) { return each.what == what; });
    if (known == m_findings.end())
        m_findings.append({what, {channel}});
    else if (!known->channels.contains(channel))
        known->channels.append(channel);
}

QString CalibrationFindings::text() const
{
    const bool isOneChannel =
        std::all_of(m_findings.begin(), m_findings.end(), [this](const Finding &each) {
            return each.channels == QList{m_findings.first().channels.first()};
        });
    QStringList parts;
    for (const Finding &each : m_findings)
        parts << (isOneChannel
                      ? each.what
                      : u"%1 (%2)"_s.arg(each.what, boardTexts::channelList(each.channels)));
    const QString text = parts.join(u"; "_s);
    return isOneChannel && !isEmpty()
               ? boardTexts::channelList(m_findings.first().channels) + u": "_s + text
               : text;
}

QString CalibrationFindings::remarkOnReply(const QString &reply)
{
    constexpr int separators = 2;
    if (reply.isEmpty())
        return boardTexts::noAnswer;
    return reply.count(u',') > separators ? boardTexts::severalAnswers : QString();
}

QString CalibrationFindings::remarkOn(int row, const QString &field)
{
    if (field.isEmpty())
        return boardTexts::noValue;
    const auto value = numbers::numericValue(field);
    return value ? remarkOn(row, *value) : boardTexts::noNumber;
}

QString CalibrationFindings::remarkOn(int row, double value)
{
    if (row == CalibrationTable::DacGain || row == CalibrationTable::AdcGain)
        return value < leastGain || value > mostGain ? boardTexts::gainOutside : QString();
    if (row == CalibrationTable::DacOffset || row == CalibrationTable::AdcOffset)
        return std::abs(value) > mostOffset ? boardTexts::offsetOutside : QString();
    return {};
}

} // namespace corvane
