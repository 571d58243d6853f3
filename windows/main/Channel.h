#pragma once

#include "windows/main/ChannelHost.h"
#include "windows/main/CommandBox.h"
#include "windows/widgets/Led.h"
#include "windows/widgets/ResponseView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <optional>

class QHBoxLayout;

namespace corvane {

class PlatformError;

/// One tab of the main window: the controls, history, loop, LED, status and the two timers of one
/// Channel. What goes over the wire and how is left to the transport below it.
class Channel : public QWidget
{
    Q_OBJECT

public:
    static constexpr int transferIntervalMs = 500;
    static constexpr int minPeriodMs = 10;
    static constexpr int maxPeriodMs = 3'600'000;

    [[nodiscard]] int index() const { return m_index; }
    /// What messages call the Channel: the title of its tab.
    [[nodiscard]] const QString &caption() const;

    void cmdConnect_Click();
    void cmdDisconnect_Click();
    /// Sends the command in cboOut. No effect while an earlier send of this Channel still waits.
    void cmdSend_Click();
    void cmdIDN_Click();
    void cmdSystErr_Click();
    virtual void chkLoop_Click();
    /// Takes over the period in cboMs; anything but a whole number of ms in range brings the last
    /// good one back.
    void cboMs_Change();
    /// Takes over what is typed into the entries and still pending, as leaving each of them would:
    /// a mnemonic and a menu leave none. A loop and a list run do not, for they send while one
    /// types.
    virtual void applyPendingEntries();
    /// The poll timer's tick: status, loop, and the GPIB Channel's read.
    void Timer1_Timer();

    /// The start-up defaults of the Channel: timers, LED, wait count.
    void initialise();
    /// Stops both timers; nothing of the Channel runs any more.
    void stopTimers();
    void setCommand(const QString &text);

    /// The port is open, the socket connected, the GPIB control configured.
    [[nodiscard]] virtual bool isOpen() const = 0;
    /// Where the device is: of an open Channel the place that it is connected to, which its entries
    /// may not name any more, else the place in the entries.
    [[nodiscard]] virtual QString place() const = 0;

    CommandBox *cboOut = nullptr;
    QPushButton *cmdSend = nullptr;
    QPushButton *cmdIDN = nullptr;
    QPushButton *cmdSystErr = nullptr;
    QCheckBox *chkLoop = nullptr;
    QComboBox *cboMs = nullptr;
    ResponseView *txtIn = nullptr;
    QPushButton *cmdConnect = nullptr;
    QPushButton *cmdDisconnect = nullptr;
    QLabel *lblStatus = nullptr;
    QLabel *lblPlace = nullptr;
    Led *shpComm = nullptr;
    QCheckBox *chkLog = nullptr;
    QPushButton *cmdLoadFrmChmber = nullptr;
    QPushButton *cmdLoadToChmber = nullptr;
    QPushButton *cmdStop = nullptr;
    QTimer *Timer1 = nullptr;
    QTimer *TimerTransfer = nullptr;

Q_SIGNALS:
    void openChanged(bool open);
    /// Connecting has failed, at once or later.
    void connectFailed(const QString &reason);
    /// A reply, or a piece of one, is in the response box.
    void replied();

protected:
    Channel(int index, const ChannelContext &context, QWidget *parent);

    /// Opens, closes the transport. A PlatformError is shown by the caller.
    virtual void openTransport() = 0;
    virtual void closeTransport() = 0;
    /// Sends the command in the transport's framing.
    virtual void send(const QByteArray &command) = 0;
    /// One tick of the poll timer.
    virtual void poll() = 0;
    /// A send, a read or the connection failed: what the transport had noted of an exchange is
    /// forgotten.
    virtual void forgetExchange() {}
    /// The status text of the transport's state; nothing leaves the shown one as it is.
    [[nodiscard]] virtual std::optional<QString> statusText() const = 0;
    /// Shows the transport's state, at every tick and at once when it changes.
    void refreshStatus();

    /// Keeps room for the longest status text, so that no button moves under the pointer.
    void reserveStatus(const QString &longest);
    /// For a transport without a state to tell.
    void hideStatus();
    /// For a Channel whose replies are not logged.
    void disableLog();
    /// A field of the connection row, with its caption and the name "name_index".
    void addConnectionField(const QString &caption, QWidget *field, const QString &name);
    /// A widget of the connection row without a caption.
    void addConnectionWidget(QWidget *widget, const QString &name);

    /// Shows the not-connected message; a list run that is on waits.
    void refuseNotConnected();
    /// Shows why nothing was sent; nothing repeats it: the loop is off and a list run has ended.
    void refuseSend(const QString &message);
    /// A send or a read failed: its cause is in the window and the message in a box; nothing of the
    /// exchange is left.
    void exchangeFailed(const PlatformError &error, const QString &message);
    /// The steps that every send begins with: clears the box, notes the command in the history.
    void beginReply();
    /// Appends an arrival to the box and says `note`, or that the box drops its oldest text, then
    /// delivers.
    void appendReply(QByteArrayView arrival, const ResponseText::Cleaning &cleaning,
                     const QString &note = {});
    /// The steps after an arrival: flags, wait count, the grid's copy.
    void deliverReply(qsizetype keep);
    /// Sends the command with the entries as they are in force.
    void sendCommand();
    /// In a tick: one turn of the loop when it is on.
    void loopOnce();
    void switchOffLoop();

    ChannelContext m_context;

private:
    void makeControls();
    void layOut();
    void connectHandlers();
    void orderTabs();
    void tellRefusal(const QString &message);
    void showPlace(const QString &place);
    void applyPendingPeriod();
    void SetLoopTime(int ms);

    const int m_index;
    QHBoxLayout *m_connectionRow = nullptr;
    QLabel *m_statusCaption = nullptr;
    QString m_place; ///< as shown
    int m_periodMs = 1000;
    bool m_sending = false;
    bool m_shownOpen = false;
    QString m_replyNote; ///< as said of the reply in the box
};

} // namespace corvane
