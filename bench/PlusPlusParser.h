// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <vector>

namespace corvane::bench {

/// One line from the computer: a command to the controller ("++addr 5", without its "++"), or bytes
/// for the addressed instrument.
struct PlusPlusLine
{
    bool command = false;
    QByteArray text;
};

/// Cuts the bytes of a "++" controller's input into lines and takes the escapes out: ESC makes the
/// CR, LF, ESC or "+" behind it an ordinary byte. A line that begins with "++" not escaped is a
/// command; an empty one is nothing.
class PlusPlusParser
{
public:
    std::vector<PlusPlusLine> feed(const QByteArray &bytes);

private:
    void take(char c, bool escaped);

    QByteArray m_text;
    int m_leadingPluses = 0;
    bool m_escape = false;
};

} // namespace corvane::bench
