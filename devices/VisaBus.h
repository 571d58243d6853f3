// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/BlockingBus.h"
#include "devices/VisaLibrary.h"

#include <map>
#include <memory>

namespace corvane {

/// A board behind the vi* functions.
class VisaBus : public BlockingBus
{
public:
    VisaBus(std::shared_ptr<const VisaLibrary> library, int board);

    [[nodiscard]] QString description() const override;
    void open(const GpibAddress &address) override;
    void clear(const GpibAddress &address) override;
    void write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs) override;
    QByteArray read(const GpibAddress &address, int timeoutMs) override;
    void close() override;

private:
    using Session = VisaLibrary::Session;
    using Status = VisaLibrary::Status;

    Session sessionOf(const GpibAddress &address);
    Session sessionOf(const GpibAddress &address, int timeoutMs);
    [[noreturn]] void fail(const GpibAddress &address, Status status);

    std::shared_ptr<const VisaLibrary> m_library;
    int m_board;
    Session m_manager = 0; ///< 0: not open
    std::map<QString, Session> m_sessions;
};

} // namespace corvane
