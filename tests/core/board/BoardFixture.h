#pragma once

#include "core/board/UnsavedCalibrations.h"
#include "core/channels/ChannelSet.h"
#include "core/channels/Module1.h"
#include "devices/GpibControl.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/FakeSerialPort.h"
#include "tests/support/FakeTcpClient.h"
#include "tests/support/ScriptedDialogs.h"
#include "windows/board/frmSBC.h"

namespace corvane {

/// The Channels over devices in memory: a board that answers on all three alike, and a meter on the
/// GPIB bus.
class FakeBoard
{
public:
    static inline const QString address = QStringLiteral("GPIB0::5");
    static constexpr int gpibTimeoutMs = 777; // told apart from every other wait

    FakeBoard(Clock &clock, Dialogs &dialogs)
        : gpib(clock, [this](int) { return std::make_unique<FakeGpibAdapter>(bus); })
        , set({rs485, serial, gpib, tcp, tcpClient2, [] { return QList<SerialPortEntry>(); }},
              module, dialogs, clock)
    {
        for (const int index : {channels::rs232, channels::tcpIp1})
            set.at(index).open();
        set.gpib().fillIn({.address = address});
        gpib.setTimeout(gpibTimeoutMs);
        serial.onOutput = [this](const QByteArray &text) { serial.feed(reply(text)); };
        tcp.onSend = [this](const QByteArray &text) { tcp.feed(reply(text)); };
        bus.onWrite = [this](const QString &to,
                             const QByteArray &text) -> std::optional<QByteArray> {
            if (to != address && meter.empty())
                return std::nullopt;
            if (to != address)
                return takeFirst(meter);
            const QByteArray answered = reply(text);
            return answered.isEmpty() ? std::nullopt : std::optional(answered);
        };
    }

    /// Everything written to the board, on any Channel.
    [[nodiscard]] QStringList commands() const
    {
        const QString write = QStringLiteral("write %1 ").arg(address);
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
    /// The board says something over the Channel of a method.
    void say(int method, const QByteArray &text)
    {
        if (method == BoardLink::Rs232)
            serial.feed(text);
        else if (method == BoardLink::TcpIp)
            tcp.feed(text);
        else
            bus.replies[address].push_back(text);
    }
    void setResponses(const QByteArray &text)
    {
        for (ChannelSession *each : set.all())
            each->setResponse(text);
    }

    FakeSerialPort rs485;
    FakeSerialPort serial;
    FakeTcpClient tcp;
    FakeTcpClient tcpClient2;
    FakeGpibBus bus;
    GpibControl gpib;
    Module1 module;
    ChannelSet set;
    UnsavedCalibrations unsaved;
    /// The board's reply to a command; empty: silence.
    std::function<QString(const QString &)> answer = [](const QString &) { return QString(); };
    /// The meter's coming replies; none left: silence.
    std::deque<QByteArray> meter;

private:
    [[nodiscard]] QByteArray reply(const QByteArray &text) const
    {
        return answer(QString::fromLatin1(text)).toLatin1();
    }
    static QByteArray takeFirst(std::deque<QByteArray> &replies)
    {
        const QByteArray first = replies.front();
        replies.pop_front();
        return first;
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
    FakeBoard channels{clock, dialogs};
    frmSBC board{channels.set, channels.unsaved, dialogs, clock};
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
