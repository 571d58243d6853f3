// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ListFixture.h"
#include "core/lists/CommandList.h"
#include "core/lists/TransferEngine.h"
#include "tests/support/FakeChannels.h"

namespace corvane {

/// An engine over Channels that are open; the ticks come by hand.
class Transfer : public ListFolder, protected FakeChannels
{
protected:
    using Outcome = TransferEngine::Outcome;
    using RowVerdict = GridModel::Verdict;

    Transfer()
    {
        using Engine = TransferEngine;
        QObject::connect(&m_engine, &Engine::runEnded, &m_engine,
                         [this](Outcome outcome) { m_outcomes.push_back(outcome); });
        QObject::connect(&m_engine, &Engine::rowStarted, &m_engine,
                         [this](int row, const QString &command) {
                             m_rows += u"%1 > %2"_s.arg(row).arg(command);
                         });
        QObject::connect(&m_engine, &Engine::rowFinished, &m_engine,
                         [this](int row, const QString &reply, RowVerdict verdict) {
                             m_rows += u"%1 < %2 %3"_s.arg(row).arg(reply).arg(int(verdict));
                         });
        QObject::connect(&m_engine, &Engine::progressChanged, &m_engine,
                         [this](int row, int rows, const QString &beside) {
                             m_progress = u"%1 of %2 %3"_s.arg(row).arg(rows).arg(beside).trimmed();
                         });
        QObject::connect(&m_engine, &Engine::noted, &m_engine,
                         [this](const QString &note) { m_noted = note; });
        for (ChannelSession *each : channels.all()) {
            each->open();
            QObject::connect(each, &ChannelSession::commandSent, &m_engine,
                             [this](const QString &command) {
                                 m_sent += command;
                                 if (m_onSend)
                                     std::exchange(m_onSend, {})();
                             });
        }
    }

    void load(const char *name, const QByteArray &text)
    {
        ASSERT_EQ(m_list.OpenFile(file(name, text)), ListContents::End::Complete);
    }

    /// Loads the list and starts to send it on the Channel.
    void send(const char *name, const QByteArray &text, int index = 0)
    {
        load(name, text);
        m_engine.cmdLoadToChmber_Click(index);
    }

    void tick(int index = 0) { m_engine.TimerTransfer_Timer(index); }

    /// The Channel says that its reply goes on with `tail` behind its first `keep` bytes. What its
    /// response holds is another matter, so that a look at it would be seen.
    void say(qsizetype keep, QByteArrayView tail, int index = 0)
    {
        Q_EMIT channels.at(index).replied(keep, tail);
    }
    /// A piece of a reply, as a Channel appends it to its response.
    void piece(const QByteArray &bytes, int index = 0)
    {
        ChannelSession &session = channels.at(index);
        const QByteArray box = session.response().bytes();
        session.setResponse(box + bytes);
        say(box.size(), bytes, index);
    }

    bool isTimed(int index) { return channels.at(index).TimerTransfer->isActive(); }
    /// The Channels whose timers run, and those that a list uses.
    QList<int> busy()
    {
        QList<int> found;
        for (int index = 0; index < channelCount; ++index) {
            if (isTimed(index) || channels.users().isUsed(index, ChannelUse::List))
                found += index;
        }
        return found;
    }

    void expectIdle()
    {
        EXPECT_FALSE(module.transferRunning() || module.GpibTransfer || module.ResponseReady);
        EXPECT_EQ(busy(), QList<int>());
        EXPECT_EQ(module.CurrentListRow + m_list.currentRow() + m_list.markedRow(), 0);
        EXPECT_TRUE(m_progress.startsWith(u"0 of")) << m_progress.toStdString();
    }

    void expectEnd(Outcome outcome)
    {
        expectIdle();
        EXPECT_EQ(m_outcomes, std::vector<Outcome>{outcome});
        m_outcomes.clear();
    }

    CommandList m_list{module, dialogs};
    TransferEngine m_engine{channels, m_list, dialogs};
    std::vector<Outcome> m_outcomes;
    QStringList m_rows;
    QStringList m_sent;
    QString m_progress;
    QString m_noted;
    /// Runs once inside a send, as a message box or a wait there would.
    std::function<void()> m_onSend;
};

} // namespace corvane
