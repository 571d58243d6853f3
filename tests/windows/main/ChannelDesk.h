// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelSession.h"
#include "core/channels/Module1.h"
#include "devices/GpibControl.h"
#include "devices/WaitGroup.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/FakeSerialPort.h"
#include "tests/support/FakeTcpClient.h"
#include "tests/support/ScriptedDialogs.h"

namespace corvane {

/// Hears what a Channel says.
class Listener : public QObject
{
public:
    void listenTo(ChannelSession &session)
    {
        using Session = ChannelSession;
        connect(&session, &Session::replied, this, [this](qsizetype keep, QByteArrayView tail) {
            gridCell.truncate(keep);
            gridCell.append(tail);
            ++replies;
        });
        connect(&session, &Session::timedOut, this, [this] { ++timeOuts; });
        connect(&session, &Session::sendFailed, this, [this] { ++failedSends; });
        connect(&session, &Session::faultChanged, this, [this](const QString &fault) {
            if (fault.isEmpty())
                faults.clear();
            else
                faults.append(fault);
        });
        connect(&session, &Session::progressChanged, this,
                [this](const QString &text) { progress.append(text); });
        connect(&session, &Session::noteChanged, this,
                [this](const QString &note) { notes.append(note); });
    }

    /// The reply as a grid that only takes the tails would hold it.
    QByteArray gridCell;
    int replies = 0;
    int timeOuts = 0;
    int failedSends = 0;
    QStringList faults; ///< since the device last worked
    QStringList progress;
    QStringList notes;
};

/// Everything a Channel needs, in memory.
struct ChannelDesk
{
    FakeClock clock;
    WaitGroup waits{clock};
    ScriptedDialogs dialogs;
    Module1 module;
    ChannelUsers users;
    Listener host;
    ChannelContext context{module, dialogs, waits, users};
};

} // namespace corvane
