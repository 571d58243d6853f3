#include "board/CalibrationScan.h"

#include "board/BoardLink.h"
#include "board/BoardSession.h"
#include "board/BoardTexts.h"
#include "common/Numbers.h"
#include "platform/PlatformError.h"

#include <QScopeGuard>

namespace corvane {

using numbers::numberText;

CalibrationEnd CalibrationScan::scanAll(const QString &meterAddress)
{
    start(2 * CalibrationTable::channels);
    m_boardConnectString = m_link.gpibConnectString();
    const QString meter = QStringLiteral("GPIB0::") + meterAddress.trimmed();
    clearTable();
    for (int channel = 0; channel < CalibrationTable::channels; ++channel) {
        if (!readChannel(channel))
            break;
        m_session.say(boardTexts::moveSensor.arg(channel));
        if (!readMeter(channel, meter))
            break;
    }
    return end();
}

CalibrationEnd CalibrationScan::scanCalibrations()
{
    start(CalibrationTable::channels);
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
    showStep(channel, QStringLiteral("reading DAC and ADC"));
    QString reply;
    if (!pause(100) || !query(QStringLiteral("DAC? ") + numberText(channel), 100, reply))
        return false;
    fillRows(CalibrationTable::DacValue, channel, reply);
    if (!pause(100) || !query(QStringLiteral("ADC? ") + numberText(channel), 300, reply))
        return false;
    fillRows(CalibrationTable::AdcValue, channel, reply);
    return true;
}

/// The meter is asked through the board link, which reaches it when the method is IEEE.
bool CalibrationScan::readMeter(int channel, const QString &meterConnectString)
{
    if (isEnded())
        return false;
    showStep(channel, QStringLiteral("reading the meter"));
    const auto restore = qScopeGuard([this] { m_link.setGpibConnectString(m_boardConnectString); });
    QString reply;
    if (!address(meterConnectString) || !pause(100) ||
        !query(QStringLiteral("data?"), 100, reply) || !pause(100))
        return false;
    addressBoardAgain();
    setCell(CalibrationTable::Meter, channel, numbers::fixed5(numbers::leadingNumber(reply)));
    return pause(100);
}

bool CalibrationScan::address(const QString &connectString)
{
    try {
        m_link.addressGpib(connectString);
    } catch (const PlatformError &error) {
        return fail(QStringLiteral("The meter could not be read: ") + error.description());
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
