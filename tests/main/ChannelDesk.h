#pragma once

#include "main/GpibChannel.h"
#include "main/SerialChannel.h"
#include "main/TcpChannel.h"
#include "platform/GpibControl.h"
#include "platform/WaitGroup.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/FakeSerialPort.h"
#include "tests/support/FakeTcpClient.h"
#include "tests/support/ScriptedDialogs.h"

namespace corvane {

/// The window around a Channel under test: records what the Channel hands on.
class RecordingHost : public ChannelHost
{
public:
    explicit RecordingHost(Module1 &module)
        : m_module(module)
    {
    }

    void commandSent(int, const QString &) override {}
    void replyArrived(int index, qsizetype keep, QByteArrayView tail) override
    {
        gridCell.truncate(keep);
        gridCell.append(tail);
        repliesOn.push_back(index);
    }
    void replyTimedOut(int index) override { timedOutOn.push_back(index); }
    void ResetTransferData(int) override { m_module.SendMode = m_module.GetMode = false; }
    void TimerTransfer_Timer(int) override {}
    void chkLog_Click(int) override {}
    void cmdLoadFrmChmber_Click(int) override {}
    void cmdLoadToChmber_Click(int) override {}
    void cmdStop_Click(int) override {}
    [[nodiscard]] QByteArray echoPrefix() const override { return prefix; }
    void reportFault(int, const QString &description) override { faults.append(description); }
    void clearFault(int) override { faults.clear(); }
    void showProgress(const QString &text) override { progress.append(text); }
    void noteReply(int, const QString &note) override
    {
        if (notes.isEmpty() || notes.last() != note)
            notes.append(note);
    }
    [[nodiscard]] bool runsList(int index) const override
    {
        return m_module.transferRunning() && index != freeOfLists;
    }
    [[nodiscard]] QString channelRefusal(int) const override { return refusal; }

    QString refusal;
    /// A list that runs is on another Channel than this one.
    int freeOfLists = -1;
    /// The reply as a grid that only takes the tails would hold it.
    QByteArray gridCell;
    std::vector<int> repliesOn;
    std::vector<int> timedOutOn;
    QByteArray prefix = "<05:";
    QStringList faults;
    QStringList progress;
    QStringList notes; ///< as they changed

private:
    Module1 &m_module;
};

/// Everything a Channel needs, in memory.
struct ChannelDesk
{
    FakeClock clock;
    WaitGroup waits{clock};
    ScriptedDialogs dialogs;
    Module1 module;
    RecordingHost host{module};
    ChannelContext context{host, module, dialogs, waits};
};

} // namespace corvane
