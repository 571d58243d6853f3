#pragma once

#include "devices/SerialPort.h"

#include <utility>

namespace corvane::perf {

/// A serial port without a device: what is fed to it has arrived. It measures the receive path
/// alone.
class MemoryPort : public SerialPort
{
public:
    /// One arrival, signalled as a driver does.
    void feed(const QByteArray &bytes)
    {
        m_waiting += bytes;
        Q_EMIT onComm(CommEvent::receive);
    }

    [[nodiscard]] int commPort() const override { return m_number; }
    void setCommPort(int number) override { m_number = number; }
    [[nodiscard]] QString device() const override { return {}; }
    void setDevice(const QString &) override {}
    [[nodiscard]] QString place() const override { return {}; }
    [[nodiscard]] QString settings() const override { return m_settings; }
    void setSettings(const QString &settings) override { m_settings = settings; }
    [[nodiscard]] bool isPortOpen() const override { return m_open; }
    void setPortOpen(bool open) override { m_open = open; }
    [[nodiscard]] int inputLen() const override { return m_inputLen; }
    void setInputLen(int bytes) override { m_inputLen = bytes; }
    [[nodiscard]] int rThreshold() const override { return m_threshold; }
    void setRThreshold(int bytes) override { m_threshold = bytes; }
    void output(const QByteArray &) override {}
    QByteArray input() override { return std::exchange(m_waiting, {}); }

private:
    QByteArray m_waiting;
    QString m_settings;
    int m_number = 1;
    int m_inputLen = 0;
    int m_threshold = 0;
    bool m_open = false;
};

} // namespace corvane::perf
