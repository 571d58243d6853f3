// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/main/CommandBox.h"
#include "windows/widgets/Led.h"
#include "windows/widgets/ResponseView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

class QHBoxLayout;

namespace corvane {

class ChannelSession;
class ConnectHint;

/// One tab of the main window: shows a Channel's session and hands on what the user does. It keeps
/// no state of the Channel, only what is still being typed.
class ChannelTab : public QWidget
{
    Q_OBJECT

public:
    [[nodiscard]] ChannelSession &session() const { return m_session; }
    [[nodiscard]] int index() const;

    void cmdConnect_Click();
    void cmdDisconnect_Click();
    void cmdSend_Click();
    void cmdIDN_Click();
    void cmdSystErr_Click();
    void chkLoop_Click();
    void chkLog_Click();
    /// Takes over the period in cboMs; anything but a whole number of ms in range brings the last
    /// good one back.
    void cboMs_Change();
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// There is no bench to be had any more, as it has been started.
    void withdrawBench();
    /// Takes over what is typed into the entries and still pending, as leaving each of them would:
    /// a mnemonic and a menu leave none. A loop and a list run do not, for they send while one
    /// types.
    virtual void applyPendingEntries();

    CommandBox *cboOut = nullptr;
    QPushButton *cmdSend = nullptr;
    QPushButton *cmdIDN = nullptr;
    QPushButton *cmdSystErr = nullptr;
    QCheckBox *chkLoop = nullptr;
    QComboBox *cboMs = nullptr;
    ResponseView *txtIn = nullptr;
    ConnectHint *hint = nullptr; ///< null until the tab has been painted
    QPushButton *cmdConnect = nullptr;
    QPushButton *cmdDisconnect = nullptr;
    QLabel *lblStatus = nullptr;
    QLabel *lblPlace = nullptr;
    Led *shpComm = nullptr;
    QCheckBox *chkLog = nullptr;
    /// Hidden where the transport has no connection to lose.
    QCheckBox *chkReconnect = nullptr;
    QPushButton *cmdLoadFrmChmber = nullptr;
    QPushButton *cmdLoadToChmber = nullptr;
    QPushButton *cmdStop = nullptr;

Q_SIGNALS:
    /// The user wants the simulated bench behind the Channels.
    void benchWanted();
    /// Its layout is whole: the Tab key's order can be set.
    void laidOut();

protected:
    ChannelTab(ChannelSession &session, QWidget *parent);

    void showEvent(QShowEvent *event) override;

    /// The session's entries into the fields of the connection row.
    virtual void showEntries() = 0;
    /// Keeps room for the longest status text, so that no button moves under the pointer.
    void reserveStatus(const QString &longest);
    /// Says in the empty response box how the Channel is connected.
    void setHint(const QString &text) { m_hint = text; }
    /// For a transport without a state to tell.
    void hideStatus();
    /// A field of the connection row, with its caption and name.
    void addConnectionField(const QString &caption, QWidget *field, const QString &name);
    /// A widget of the connection row without a caption.
    void addConnectionWidget(QWidget *widget, const QString &name);
    /// The name of a control that every tab, or several of them, have: "txtPort_0".
    [[nodiscard]] QString nameOf(const char *control) const;

private:
    void makeControls();
    void layOut();
    void finishLayout();
    void addHint();
    void connectHandlers();
    void showSession();
    void orderTabs();
    void showStatus();
    void showLight();
    void applyPendingPeriod();

    ChannelSession &m_session;
    QHBoxLayout *m_connectionRow = nullptr;
    QLabel *m_statusCaption = nullptr;
    QString m_hint;
    bool m_hasBench = true; ///< one is to be had
    bool m_isFinished = false;
    bool m_isPainted = false;
};

} // namespace corvane
