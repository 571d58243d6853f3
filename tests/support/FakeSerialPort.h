#pragma once

#include "devices/SerialPort.h"

#include <functional>
#include <vector>

namespace corvane {

/// A serial port in memory: feed it bytes, read what was written, let opening or writing fail,
/// unplug it.
class FakeSerialPort : public SerialPort
{
public:
    [[nodiscard]] int commPort() const override { return m_commPort; }
    void setCommPort(int number) override { m_commPort = number; }
    [[nodiscard]] QString device() const override { return m_device; }
    void setDevice(const QString &name) override { m_device = name; }
    [[nodiscard]] QString place() const override
    {
        return m_open ? QStringLiteral("fake port ") +
                            (m_device.isEmpty() ? QString::number(m_commPort) : m_device)
                      : QString();
    }
    [[nodiscard]] QString settings() const override { return m_settings; }
    void setSettings(const QString &settings) override { m_settings = settings; }
    [[nodiscard]] bool isPortOpen() const override { return m_open; }
    void setPortOpen(bool open) override;
    [[nodiscard]] int inputLen() const override { return m_inputLen; }
    void setInputLen(int bytes) override { m_inputLen = bytes; }
    [[nodiscard]] int rThreshold() const override { return m_rThreshold; }
    void setRThreshold(int bytes) override { m_rThreshold = bytes; }
    void output(const QByteArray &bytes) override;
    QByteArray input() override { return std::exchange(m_buffer, {}); }

    /// Bytes arrive; the receive event follows when the threshold asks for it.
    void feed(const QByteArray &bytes);
    /// The adapter is pulled out.
    void unplug(const QString &description);

    /// Everything written, one entry a write.
    std::vector<QByteArray> written;
    /// Runs after each of them; may be empty.
    std::function<void(const QByteArray &bytes)> onOutput;
    /// Not empty: opening (writing) fails with this description.
    QString failOpen;
    QString failWrite;
    /// How often the port was opened and closed.
    int opened = 0;
    int closed = 0;

private:
    int m_commPort = 0;
    QString m_device;
    QString m_settings;
    bool m_open = false;
    int m_inputLen = -1;
    int m_rThreshold = 0;
    QByteArray m_buffer;
};

} // namespace corvane
