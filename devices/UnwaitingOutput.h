// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace corvane {

/// Standard output for a program that must never wait for its reader, be it a pipe or a terminal.
/// Other writers of the same pipe or terminal do as before.
class UnwaitingOutput
{
public:
    UnwaitingOutput();
    ~UnwaitingOutput();
    Q_DISABLE_COPY_MOVE(UnwaitingOutput)

    /// Writes as many bytes from the front as go at once, and returns how many: 0 for none just
    /// now, nothing for a write that failed.
    std::optional<qsizetype> write(QByteArrayView bytes);
    /// Why the last write failed.
    [[nodiscard]] const QString &errorString() const { return m_error; }

private:
    int m_own = -1; ///< a descriptor that does not wait; -1: the shared one serves
    QString m_error;
};

} // namespace corvane
