// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelSession.h"

namespace corvane {

class GpibControl;

/// The Channel over the IEEE 488 bus: a command is written at once, its reply is read by a later
/// tick and blocks for at most the time-out. Others (the search, the board) address the same
/// control meanwhile; entries that change then are applied afterwards.
class GpibSession : public ChannelSession
{
    Q_OBJECT

public:
    static constexpr int lastPrimaryAddress = 30;

    GpibSession(GpibControl &control, const ChannelContext &context);

    [[nodiscard]] GpibControl &control() const { return m_control; }
    /// The entries: the board as in "GPIB0" and the address as in "5"; anything else that was typed
    /// is refused when it is used.
    [[nodiscard]] const QString &board() const { return m_boardEntry; }
    [[nodiscard]] const QString &address() const { return m_addressEntry; }
    /// Addresses the control to the board and the address as well.
    void setEntries(const QString &board, const QString &address);
    /// What the entries are together: "GPIB0::5".
    [[nodiscard]] const QString &connectString() const { return m_connectString; }
    /// Takes the text over as the time-out when it is a number of ms above 0 and below 60000.
    void enterTimeout(const QString &text);
    /// Addresses the control as the entries say, at start.
    void applyEntries();
    /// What a search has found, or the first address when it has found nothing: into the entries,
    /// and the reply into the box.
    void showFound(const QString &board, const QString &address, const QByteArray &reply);

    /// The last command's read is over, with or without a reply.
    [[nodiscard]] bool isReadDone() const { return GpibReadDone; }

    void setLooping(bool on) override;
    [[nodiscard]] bool isOpen() const override { return m_configured; }
    [[nodiscard]] QString place() const override;
    void fillIn(const ChannelEntries &entries) override;

Q_SIGNALS:
    /// Disconnect: the control stays configured, but whoever exchanges over it ends.
    void disconnected();

protected:
    void openTransport() override;
    void closeTransport() override;
    void transmit(const QByteArray &command) override;
    void poll() override;
    void forgetExchange() override { setReadPending(false); }
    [[nodiscard]] QString statusText() const override { return {}; }

private:
    void addressControl();
    void applyWaitingEntries();
    void openControl();
    void setReadPending(bool pending);
    void handleResponse();

    GpibControl &m_control;
    QString m_boardEntry = u"GPIB0"_s;
    QString m_addressEntry = u"0"_s;
    QString m_timedOutAt; ///< the device whose reply is still out; empty: none
    QString m_connectString;
    bool GpibReadPending = false;
    bool GpibReadDone = false;
    bool m_configured = false;
    int m_board = -1; ///< the board that was configured last, and what serves it
    QString m_adapter;
    /// The entries were changed while somebody else addressed the control.
    bool m_entriesWait = false;
    QByteArray GpibResponse;
};

} // namespace corvane
