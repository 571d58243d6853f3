#pragma once

#include "tests/support/Testing.h"
#include "windows/lists/ListHost.h"

#include <functional>

namespace corvane {

/// A main window in memory: it records what is sent, shows and stops as it is told.
class FakeListHost : public ListHost
{
public:
    int showingChannel() const override { return showing; }
    void applyEntries(int) override {}
    void cmdSend_Click_Public(int index) override
    {
        sent.append(commands[index]);
        responses[index].clear();
        if (onSend)
            onSend(index);
        timers[index] = timerAfterSend;
    }
    void setCommand(int index, const QString &text) override { commands[index] = text; }
    void setResponse(int index, const QString &text) override
    {
        responses[index] = text.toLatin1();
    }
    QByteArray response(int index) const override
    {
        ++wholeResponses;
        return responses[index];
    }
    void setTransferTimer(int index, bool running) override { timers[index] = running; }
    bool isTransferTimerRunning(int index) const override { return timers[index]; }
    void setRunning(int index, bool running) override { used[index] = running; }
    bool isClosed(int index) const override { return closed == index; }
    QString channelName(int index) const override
    {
        return QStringLiteral("Channel %1").arg(index);
    }
    void stopOperation(int index) override
    {
        stopped.append(index);
        onStop(index);
    }
    void clearLoop(int index) override { cleared.append(QStringLiteral("loop %1").arg(index)); }
    void clearLog(int index) override { cleared.append(QStringLiteral("log %1").arg(index)); }
    void setCaption(const QString &text) override { caption = text; }

    int showing = 0;
    int closed = -1;
    /// Runs inside a send, as a message box or a wait there would.
    std::function<void(int)> onSend;
    std::function<void(int)> onStop;
    /// A send that forgets to stop the timer.
    bool timerAfterSend = false;

    QStringList sent;
    QStringList commands = QStringList(5);
    QByteArrayList responses = QByteArrayList(5);
    QList<bool> timers = QList<bool>(5);
    QList<bool> used = QList<bool>(5);
    QList<int> stopped;
    QStringList cleared;
    QString caption;
    mutable int wholeResponses = 0;
};

} // namespace corvane
