// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/CalibrationScan.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
#include "core/board/BoardTexts.h"
#include "core/text/Numbers.h"
#include "devices/PlatformError.h"

#include <QScopeGuard>

namespace corvane {

using numbers::numberText;

namespace {

/// In their order, with the sum of their waits.
std::vector<CalibrationStep> stepsOf(bool withMeter)
{
    std::vector<CalibrationStep> steps;
    for (int channel = 0; channel < CalibrationTable::channels; ++channel) {
        steps.push_back({channel, u"DAC and ADC"_s, 850});
        if (withMeter)
            steps.push_back({channel, u"meter"_s, 525});
    }
    return steps;
}

} // namespace

CalibrationEnd CalibrationScan::scanAll(const QString &meterAddress)
{
    start(stepsOf(true));
    m_boardConnectString = m_link.gpibConnectString();
    const QString meter = u"GPIB0::"_s + meterAddress.trimmed();
    clearTable();
    for (int channel = 0; channel < CalibrationTable::channels; ++channel) {
        if (!readChannel(channel))
            break;
        nextStep();
        m_session.say(boardTexts::moveSensor.arg(channel));
        if (!readMeter(channel, meter))
            break;
    }
    return end();
}

CalibrationEnd CalibrationScan::scanCalibrations()
{
    start(stepsOf(false));
    clearTable();
    for (int channel = 0; channel < CalibrationTable::channels; ++channel) {
        if (!readChannel(channel))
            break;
    }
    return end();
}

void CalibrationScan::clearTable()
{
    for (int channel = 0; channel < CalibrationTable::channels; ++channel)
        clearChannel(channel);
}

bool CalibrationScan::readChannel(int channel)
{
    nextStep();
    QString reply;
    if (!pause(100) || !query(u"DAC? "_s + numberText(channel), 100, reply))
        return false;
    fillRows(CalibrationTable::DacValue, channel, reply);
    if (!pause(100) || !query(u"ADC? "_s + numberText(channel), 300, reply))
        return false;
    fillRows(CalibrationTable::AdcValue, channel, reply);
    return true;
}

/// The meter is asked through the board link, which reaches it when the method is IEEE; by another
/// one the board is asked, whatever it makes of it.
bool CalibrationScan::readMeter(int channel, const QString &meterConnectString)
{
    if (isEnded())
        return false;
    const auto restore = qScopeGuard([this] { m_link.setGpibConnectString(m_boardConnectString); });
    QString reply;
    if (!address(meterConnectString) || !pause(100) || !query(u"data?"_s, 100, reply) ||
        !pause(100))
        return false;
    addressBoardAgain();
    fillMeterRow(channel, reply, numbers::leadingNumber(reply),
                 m_link.method() == BoardLink::Ieee ? QString() : boardTexts::boardForMeter);
    return pause(100);
}

bool CalibrationScan::address(const QString &connectString)
{
    try {
        m_link.addressGpib(connectString);
    } catch (const PlatformError &error) {
        return fail(u"The meter could not be read: "_s + error.description());
    }
    return !isEnded();
}

/// The reading itself was good: a fault of the board's address is reported by its next exchange.
void CalibrationScan::addressBoardAgain()
{
    try {
        m_link.addressGpib(m_boardConnectString);
    } catch (const PlatformError &) {
    }
}

} // namespace corvane
