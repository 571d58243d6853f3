#pragma once

#include "lists/ListHost.h"

#include <QStringList>

#include <array>
#include <functional>

namespace corvane {

/// A main window in memory: it records what is sent, shows and stops as it is told.
class FakeListHost : public ListHost
{
public:
    [[nodiscard]] int showingChannel() const override { return showing; }
    void cmdSend_Click_Public(int index) override
    {
        sent.append(commands[at(index)]);
        responses[at(index)].clear();
        if (onSend)
            onSend(index);
        timers[at(index)] = timerAfterSend;
    }
    void setCommand(int index, const QString &text) override { commands[at(index)] = text; }
    void setResponse(int index, const QString &text) override
    {
        responses[at(index)] = text.toLatin1();
    }
    [[nodiscard]] QByteArray response(int index) const override
    {
        ++wholeResponses;
        return responses[at(index)];
    }
    void setTransferTimer(int index, bool running) override { timers[at(index)] = running; }
    void stopOperation(int index) override
    {
        stopped.append(index);
        if (onStop)
            onStop(index);
    }
    void clearLoop(int index) override { cleared.append(QStringLiteral("loop %1").arg(index)); }
    void clearLog(int index) override { cleared.append(QStringLiteral("log %1").arg(index)); }
    void setCaption(const QString &text) override { caption = text; }

    int showing = 0;
    /// Runs inside a send, as a message box or a wait there would.
    std::function<void(int)> onSend;
    std::function<void(int)> onStop;
    /// A send that forgets to stop the timer.
    bool timerAfterSend = false;

    QStringList sent;
    std::array<QString, 5> commands;
    std::array<QByteArray, 5> responses;
    std::array<bool, 5> timers{};
    QList<int> stopped;
    QStringList cleared;
    QString caption;
    mutable int wholeResponses = 0;

private:
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }
};

} // namespace corvane
