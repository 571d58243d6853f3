#pragma once

#include "core/board/BoardChannels.h"
#include "core/board/UnsavedCalibrations.h"
#include "devices/GpibControl.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/FakeSerialPort.h"
#include "tests/support/FakeTcpClient.h"
#include "tests/support/ScriptedDialogs.h"
#include "windows/board/frmSBC.h"

namespace corvane {

/// The main window's side of the board window, in memory: a board that answers on all three
/// Channels alike, and a meter on the GPIB bus.
class FakeBoardChannels : public BoardChannels
{
public:
    static inline const QString boardAddress = QStringLiteral("GPIB0::5");
    static constexpr int gpibTimeoutMs = 777; // told apart from every other wait

    explicit FakeBoardChannels(Clock &clock)
        : gpib(clock, [this](int) { return std::make_unique<FakeGpibAdapter>(bus); })
    {
        serial.setPortOpen(true);
        tcp.setState(SocketState::Connected);
        gpib.setConnectString(boardAddress);
        gpib.setTimeout(gpibTimeoutMs);
        bus.onWrite = [this](const QString &address,
                             const QByteArray &text) -> std::optional<QByteArray> {
            if (address == boardAddress)
                return onBoard(text);
            if (meter.empty())
                return std::nullopt;
            const QByteArray reading = meter.front();
            meter.pop_front();
            return reading;
        };
    }

    SerialPort &MSComm1() override { return serial; }
    GpibControl &QBXControl1() override { return gpib; }
    TcpClient &tcpClient1() override { return tcp; }
    [[nodiscard]] QByteArray responseBytes(int channel) const override
    {
        if (!boxText.isEmpty())
            return boxText;
        const auto &written = channel == channels::rs232 ? serial.written : tcp.sent;
        return written.empty() ? QByteArray()
                               : answer(QString::fromLatin1(written.back())).toLatin1();
    }
    void clearResponse(int channel) override
    {
        boxText.clear();
        cleared.push_back(channel);
    }
    ChannelUsers &users() override { return claims; }
    [[nodiscard]] QString faultText(int channel, Exchange half, const QString &cause) const override
    {
        return QStringLiteral("%1 %2: %3")
            .arg(half == Exchange::Send ? QStringLiteral("send") : QStringLiteral("read"))
            .arg(channel)
            .arg(cause);
    }
    UnsavedCalibrations &unsavedCalibrations() override { return unsaved; }
    void uncheckMnuSBC() override { ++unchecked; }

    /// Everything written to the board, on any Channel.
    [[nodiscard]] QStringList commands() const
    {
        const QString write = QStringLiteral("write %1 ").arg(boardAddress);
        QStringList result = bus.calls.filter(write).replaceInStrings(write, QString());
        for (const auto *written : {&serial.written, &tcp.sent}) {
            for (const QByteArray &bytes : *written)
                result << QString::fromLatin1(bytes);
        }
        return result;
    }
    void forget()
    {
        serial.written.clear();
        tcp.sent.clear();
        bus.calls.clear();
    }

    FakeSerialPort serial;
    FakeTcpClient tcp;
    FakeGpibBus bus;
    GpibControl gpib;
    /// The board's reply to a command; empty: silence.
    std::function<QString(const QString &)> answer = [](const QString &) { return QString(); };
    /// The meter's coming replies; none left: silence.
    std::deque<QByteArray> meter;
    /// What a response box still holds.
    QByteArray boxText;
    std::vector<int> cleared;
    ChannelUsers claims;
    int unchecked = 0;
    UnsavedCalibrations unsaved;

private:
    [[nodiscard]] std::optional<QByteArray> onBoard(const QByteArray &text) const
    {
        const QString reply = answer(QString::fromLatin1(text));
        return reply.isEmpty() ? std::nullopt : std::optional(reply.toLatin1());
    }
};

/// Works a window as its user does, by the controls' names: "box=text" fills in, "button" clicks;
/// ";" goes on.
inline void act(const QWidget &window, const char *script)
{
    for (const QString &step : QString::fromLatin1(script).split(u';')) {
        const QString name = step.section(u'=', 0, 0);
        const QString text = step.section(u'=', 1);
        auto *control = window.findChild<QWidget *>(name);
        ASSERT_NE(control, nullptr) << name.toStdString();
        if (auto *button = qobject_cast<QAbstractButton *>(control))
            button->click();
        else if (auto *box = qobject_cast<QComboBox *>(control))
            box->setCurrentText(text);
        else
            control->setProperty("text", text);
    }
}

/// What a box or read-out shows.
inline QString shown(const QWidget &window, const char *name)
{
    return window.findChild<QWidget *>(QString::fromLatin1(name))->property("text").toString();
}

class BoardTest : public testing::Test
{
protected:
    BoardTest() { board.show(); }

    void answerQueriesWith(const char *reply)
    {
        channels.answer = [text = QString::fromLatin1(reply)](const QString &command) {
            return command.contains(u'?') || command.startsWith(u'M') ? text : QString();
        };
    }
    void fill(const char *box, const QString &text)
    {
        board.findChild<QWidget *>(QString::fromLatin1(box))->setProperty("text", text);
    }

    FakeClock clock;
    ScriptedDialogs dialogs;
    FakeBoardChannels channels{clock};
    frmSBC board{channels, dialogs, clock};
};

/// A QString list from plain literals.
inline QStringList latin(std::initializer_list<const char *> literals)
{
    QStringList list;
    for (const char *literal : literals)
        list << QString::fromLatin1(literal);
    return list;
}

} // namespace corvane
