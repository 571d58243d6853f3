// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>

#include <vector>

/// What commands and replies say, without what a transport puts around them.
namespace corvane::replyValues {

/// A command without its line end, and the address that it has in front of it on RS-485 (">05 ").
struct Command
{
    QString address; ///< empty: it has none
    QString text;
};
Command command(int channel, QByteArrayView sent);

struct Value
{
    int field = 0; ///< 0: the reply's leading number; 1..: its place in a comma-separated reply
    double value = 0;
    QString unit; ///< what stands behind the number and may be a unit; else empty
};
/// The leading number of a reply's first line that is not blank, or each number of that line when
/// it is comma-separated. RS-485's "<05:" in front is no part of it. Empty: it has no number that a
/// double holds.
std::vector<Value> values(QByteArrayView reply);
/// True when what has come of a reply holds a line that has ended and is not blank: values() stays
/// the same whatever follows.
bool isComplete(QByteArrayView reply);

} // namespace corvane::replyValues
