// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/BoardLink.h"
#include "core/text/Dialogs.h"

#include <QObject>
#include <QPointer>

#include <memory>

namespace corvane {

/// Who may use the board: one operation at a time, none while the main window uses the Channel,
/// none once the window closes. It also shows the operation's message boxes, so that closing the
/// window can end them; what is exchanged is left to the operations.
///
/// A Channel that fails or closes ends the operation, and when that has returned one message box
/// tells why.
class BoardSession : public QObject
{
    Q_OBJECT

public:
    struct End
    {
        void operator()(BoardSession *session) const { session->endOperation(); }
    };
    /// The right to use the board, until it goes out of scope; null: there is none.
    using Operation = std::unique_ptr<BoardSession, End>;

    enum class Uses { Board, BoardAndMeter };

    BoardSession(BoardLink &link, ChannelSet &channels, Dialogs &dialogs, QObject *window);

    /// Starts an operation. Null, without a word, while another one runs or the window closes;
    /// null, after a message box, while the main window uses a Channel that is needed.
    [[nodiscard]] Operation begin(Uses uses = Uses::Board);
    [[nodiscard]] bool isRunning() const { return m_running; }
    /// What the message box will say of the fault that has ended the running operation; empty when
    /// none has.
    [[nodiscard]] const QString &fault() const { return m_fault; }

    /// True when the operation must return at once, without another exchange or message.
    [[nodiscard]] bool isStopped() const;
    /// Ends the running operation; later ones may start.
    void interrupt();
    /// Ends the running operation and refuses all later ones: the window closes.
    void shut();

    /// Shows a message box over the window; Dismissed, without a box, when stopped.
    Dialogs::Answer ask(const Dialogs::MessageBox &box);
    void say(const QString &text) { ask({.text = text}); }
    /// True when the text can go over the wire; otherwise says so.
    bool checkSendable(const QString &text);

Q_SIGNALS:
    void runningChanged(bool running);

private:
    [[nodiscard]] bool mayUse(int channel);
    [[nodiscard]] bool usesChannel(int channel) const;
    void claimChannels();
    void channelClosed(int channel);
    void fail(int channel, Exchange half, const QString &cause);
    void stop();
    void endOperation();

    BoardLink &m_link;
    ChannelSet &m_channels;
    Dialogs &m_dialogs;
    QPointer<QObject> m_window;
    bool m_running = false;
    /// The main window was asked and let the operation have its Channel.
    bool m_granted = false;
    Uses m_uses = Uses::Board;
    bool m_shut = false;
    int m_openBoxes = 0;
    QString m_fault;
};

} // namespace corvane
