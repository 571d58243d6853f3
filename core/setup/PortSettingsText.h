// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QStringList>

/// A serial settings string taken apart into the texts of its entry boxes: baud rate, parity, data
/// bits and stop bits. It judges nothing: what the port cannot do is the port's to say.
namespace corvane::portSettingsText {

/// The parity box's list, each entry led by its letter.
inline const QStringList parities = {u"E - Even"_s, u"M - Mark"_s, u"N - None"_s, u"O - Odd"_s,
                                     u"S - Space"_s};

/// Splits "9600,n,8,1" into four; the parity becomes upper case. Missing parts are empty, parts
/// behind the fourth are dropped.
QStringList parts(const QString &settings);
/// "9600,N,8,1" of four parts: blanks trimmed, an entry of the parity list as its letter, any other
/// parity text as it stands.
QString joined(QStringList parts);

} // namespace corvane::portSettingsText
