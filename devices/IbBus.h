// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/BlockingBus.h"
#include "devices/IbLibrary.h"
#include "devices/Literals.h"

#include <map>
#include <memory>

namespace corvane {

/// A board behind the ib* functions.
class IbBus : public BlockingBus
{
public:
    /// `board` is the library's number of it. `deviceFiles` is what stands before that number in
    /// the name of the board's device file, where the library has such files.
    IbBus(std::shared_ptr<const IbLibrary> library, int board,
          const QString &deviceFiles = u"/dev/gpib"_s);

    /// Why the board cannot be there, or an empty text; asks the device file only.
    [[nodiscard]] QString missing() const;

    [[nodiscard]] QString description() const override;
    void open(const GpibAddress &address) override;
    void clear(const GpibAddress &address) override;
    void write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs) override;
    QByteArray read(const GpibAddress &address, int timeoutMs) override;
    void close() override;

private:
    struct Device
    {
        int handle;
        int timeoutCode;
    };

    int deviceAt(const GpibAddress &address, int timeoutMs);
    int newDevice(const GpibAddress &address, int timeoutCode);
    [[nodiscard]] bool failed(int status) const;
    [[noreturn]] void fail(const GpibAddress &address);
    [[nodiscard]] QString reason(int error, long count) const;

    std::shared_ptr<const IbLibrary> m_library;
    int m_board;
    QString m_deviceFile;
    std::map<QString, Device> m_devices;
    int m_failedOpenings = 0;
};

} // namespace corvane
