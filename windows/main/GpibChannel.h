#pragma once

#include "windows/main/Channel.h"

namespace corvane {

class GpibControl;

/// The Channel over IEEE 488. A command is written at once; its reply is read one poll period
/// later, blocking for at most the control's Timeout.
class GpibChannel : public Channel
{
    Q_OBJECT

public:
    GpibChannel(int index, GpibControl &control, const ChannelContext &context,
                QWidget *parent = nullptr);

    /// A board or an address was chosen: the connect string follows, as soon as nobody else
    /// addresses the control.
    void cboIEEE_Change();
    /// Applies the time-out entry, or brings the control's own back.
    void txtTimeout488_Apply();
    /// The start-up default: the connect string as the entries make it, the time-out as entered.
    void applyEntries();
    /// Shows another place in the entries (the GPIB search found it).
    void showAddress(const QString &board, const QString &address);
    void chkLoop_Click() override;
    void applyPendingEntries() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    QComboBox *cboIEEEPort = nullptr;
    QComboBox *cboIEEEAddress = nullptr;
    QLabel *lblConnectString = nullptr;
    QLineEdit *txtTimeout488 = nullptr;
    QPushButton *cmdSearchGPIB = nullptr;
    QPushButton *cmdAdapter = nullptr;

    [[nodiscard]] bool isOpen() const override { return m_configured; }
    [[nodiscard]] QString place() const override;
    /// A command was written and its reply has not been read yet.
    [[nodiscard]] bool isReadPending() const { return GpibReadPending; }
    /// The last command's read is over, with or without a reply.
    [[nodiscard]] bool isReadDone() const { return GpibReadDone; }
    [[nodiscard]] GpibControl &control() const { return m_control; }

Q_SIGNALS:
    void searchRequested();
    void adapterRequested();

protected:
    void openTransport() override;
    void closeTransport() override;
    void send(const QByteArray &command) override;
    void poll() override;
    [[nodiscard]] std::optional<QString> statusText() const override;
    void forgetExchange() override;

private:
    void buildFields();
    void setTimeoutBold(bool bold);
    void showTimeout();
    void handleResponse();
    void applyWaitingEntries();
    void addressControl();
    void openControl();

    GpibControl &m_control;
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
