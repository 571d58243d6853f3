// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QPlainTextEdit;

/// The text of a text box as files hold it.
namespace corvane::plainText {

/// Every character as it stands, lines ended by CR LF. The box's own toPlainText turns the
/// no-break blank into a blank.
QString of(const QPlainTextEdit &box);

} // namespace corvane::plainText
