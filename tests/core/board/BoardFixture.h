// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/UnsavedCalibrations.h"
#include "tests/support/FakeChannels.h"
#include "windows/board/frmSBC.h"

namespace corvane {

/// The Channels over devices in memory: a board that answers on all three alike, and a meter on the
/// GPIB bus.
class FakeBoard : public FakeDevices
{
public:
    static inline const QString address = u"GPIB0::5"_s;
    static constexpr int gpibTimeoutMs = 777; // told apart from every other wait

    FakeBoard(Clock &clock, Dialogs &dialogs)
        : FakeDevices(clock, dialogs)
    {
        for (const int index : {corvane::channels::rs232, corvane::channels::tcpIp1})
            set.at(index).open();
        set.gpib().fillIn({.address = address});
        gpib.setTimeout(gpibTimeoutMs);
        rs232.onOutput = [this](const QByteArray &text) { rs232.feed(reply(text)); };
        tcpClient1.onSend = [this](const QByteArray &text) { tcpClient1.feed(reply(text)); };
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
        const QString write = u"write %1 "_s.arg(address);
        QStringList result = bus.calls.filter(write).replaceInStrings(write, QString());
        for (const auto *written : {&rs232.written, &tcpClient1.sent}) {
            for (const QByteArray &bytes : *written)
                result << QString::fromLatin1(bytes);
        }
        return result;
    }
    void forget()
    {
        rs232.written.clear();
        tcpClient1.sent.clear();
        bus.calls.clear();
    }
    /// The board says something over the Channel of a method.
    void say(int method, const QByteArray &text)
    {
        if (method == BoardLink::Rs232)
            rs232.feed(text);
        else if (method == BoardLink::TcpIp)
            tcpClient1.feed(text);
        else
            bus.replies[address].push_back(text);
    }
    void setResponses(const QByteArray &text)
    {
        for (ChannelSession *each : set.all())
            each->setResponse(text);
    }

    ChannelSet &set = channels;
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
        QByteArray first = replies.front();
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
