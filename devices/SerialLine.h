// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/SerialSettings.h"

#include <QString>

/// What the operating system knows about a serial line and the toolkit does not tell. Systems
/// without the means answer as if all were well.
namespace corvane::serialLine {

/// True when the device behind the open port is gone (unplugged, hung up).
bool isHungUp(const QSerialPort &port);

/// The settings that the driver took only in part or not at all, as a text that names the first
/// one and what the driver made of it; empty when it took them all. A rate counts as taken when it
/// is within 3 %.
QString refusedSetting(const QSerialPort &port, const SerialSettings &wanted);

} // namespace corvane::serialLine
