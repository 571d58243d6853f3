// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/GpibControl.h"

#include "devices/PlatformError.h"

namespace corvane {

/// One use of the control: refused while another one runs, ended by going out of scope.
class GpibControl::Use
{
public:
    explicit Use(GpibControl &control)
        : m_control(control)
    {
        if (control.m_shutDown)
            throw PlatformError(u"the GPIB control is shutting down"_s);
        if (control.m_busy)
            throw PlatformError(u"the GPIB control is busy with another exchange; try again"_s);
        control.m_waits.reopen();
        setBusy(true);
    }
    ~Use() { setBusy(false); }
    Q_DISABLE_COPY_MOVE(Use)

private:
    void setBusy(bool busy)
    {
        m_control.m_busy = busy;
        Q_EMIT m_control.busyChanged(busy);
    }

    GpibControl &m_control;
};

GpibControl::GpibControl(Clock &clock, AdapterFactory factory)
    : m_waits(clock)
    , m_factory(std::move(factory))
{
}

GpibControl::~GpibControl() = default;

void GpibControl::setTimeout(int ms)
{
    if (ms > 0 && ms < 60000)
        m_timeoutMs = ms;
}

void GpibControl::open()
{
    const Use use(*this);
    const auto address = GpibAddress::parse(m_connectString);
    adapter(address.board).open(address, m_waits);
}

void GpibControl::reset()
{
    const Use use(*this);
    const auto address = GpibAddress::parse(m_connectString);
    adapter(address.board).clear(address, m_waits);
}

GpibAddress GpibControl::tellAddress()
{
    const auto address = GpibAddress::parse(m_connectString);
    const QString text = address.toString();
    if (std::exchange(m_told, text) != text)
        Q_EMIT addressed(text);
    return address;
}

bool GpibControl::put(const QByteArray &bytes)
{
    const Use use(*this);
    const auto address = tellAddress();
    adapter(address.board).write(address, bytes, m_timeoutMs, m_waits);
    return !m_waits.isClosed();
}

QByteArray GpibControl::take()
{
    const Use use(*this);
    m_incomplete.clear();
    const auto address = tellAddress();
    GpibAdapter &from = adapter(address.board);
    QByteArray reply = from.read(address, m_timeoutMs, m_waits);
    m_incomplete = gpibReply::whyIncomplete(reply, from.replyEnd());
    if (reply.isEmpty() && !m_waits.isClosed())
        Q_EMIT timedOut();
    return reply;
}

void GpibControl::cancel()
{
    if (m_busy)
        m_waits.close();
}

void GpibControl::shutDown()
{
    m_shutDown = true;
    m_waits.close();
}

QString GpibControl::adapterDescription(int board)
{
    return adapter(board).description();
}

QString GpibControl::adapterVersion(int board)
{
    const Use use(*this);
    return adapter(board).version(m_waits);
}

void GpibControl::forgetAdapter(int board)
{
    const Use use(*this);
    m_adapters.at(static_cast<size_t>(board)).reset();
    Q_EMIT adapterForgotten(board);
}

GpibAdapter &GpibControl::adapter(int board)
{
    auto &made = m_adapters.at(static_cast<size_t>(board));
    if (!made)
        made = m_factory(board);
    return *made;
}

} // namespace corvane
