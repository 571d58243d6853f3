// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

/// The lock files by which programs tell each other that they use a serial device: LCK..ttyUSB0 in
/// one of the system's lock folders, with the number of the process in it.
namespace corvane::serialLock {

/// Who has locked a device.
struct Holder
{
    qint64 process = 0; ///< 0: the file cannot be read
    QString program{};  ///< empty when the system does not tell
    QString file{};
    bool isOwn = false; ///< this process: another Channel

    /// As in "picocom (process 1234)".
    [[nodiscard]] QString toString() const;
};

/// What a lock file says of its holder.
struct Note
{
    qint64 process = 0; ///< written as text or as the bytes of an int; 0: no number
    QString program{};  ///< the toolkit writes it in the second line; empty when there is none
};

[[nodiscard]] Note noteIn(const QByteArray &content);

/// The living process that has locked the device (its real path, without links). A lock whose
/// process has ended counts as none and is taken away. Systems whose devices are exclusive anyway
/// have no holders.
[[nodiscard]] std::optional<Holder> holder(const QString &device);

/// Who uses the device, whether or not it is locked: the holder of its lock, else another process
/// that has it open, as far as the system lets this one see; a Channel of this one has a lock.
/// Nothing is opened and nothing disturbed.
[[nodiscard]] std::optional<Holder> user(const QString &device);

} // namespace corvane::serialLock
