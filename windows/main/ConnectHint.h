// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace corvane {

class ChannelSession;
class ResponseView;

/// What stands in a Channel's empty response box until the Channel is connected: how to connect it,
/// and that a simulated bench is at hand.
class ConnectHint : public QWidget
{
    Q_OBJECT

public:
    /// `text` says how this kind of Channel is connected. All that is given must outlive the hint.
    ConnectHint(const QString &text, const ChannelSession &session, ResponseView &box);

    /// There is no bench to be had any more, as it has been started.
    void withdrawBench();

    QLabel *lblHint;
    QPushButton *cmdBench;

Q_SIGNALS:
    void benchWanted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showWhereEmpty();
    void fill();

    const ChannelSession &m_session;
    ResponseView &m_box;
};

} // namespace corvane
