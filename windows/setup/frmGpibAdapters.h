// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAdapterChoice.h"
#include "devices/GpibAddress.h"
#include "windows/widgets/ControlArray.h"
#include "windows/widgets/ReopenedDialog.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;

namespace corvane {

class Dialogs;
class GpibAdapterFactory;
class GpibControl;

/// The "GPIB Adapters" window: chooses for each board the kind of its adapter and its place, and
/// asks an adapter for its version. It changes the choices and makes the control forget the
/// adapters that are no longer chosen; making the new ones is the control's.
class frmGpibAdapters : public ReopenedDialog
{
    Q_OBJECT

public:
    static constexpr int boardCount = GpibAddress::boardCount;

    /// What the window works on; all of it outlives the window.
    struct Parts
    {
        GpibAdapterChoices &choices;
        GpibControl &control;
        const GpibAdapterFactory &factory;
        Dialogs &dialogs;
        /// The devices that the system has serial ports for, offered as places.
        std::function<QStringList()> serialDevices;
    };

    explicit frmGpibAdapters(Parts parts, QWidget *parent = nullptr);

    // Event handlers; a board outside 0..3 is ignored.
    void Form_Load() override;
    void cboKind_Click(int board);
    /// Stores the board's choice and asks the adapter for its version.
    void cmdTest_Click(int board);
    /// Stores all choices and closes; a wrong one is told and the window stays.
    void cmdOK_Click();
    void cmdCancel_Click() { close(); }

    ControlArray<QComboBox, boardCount> cboKind{};
    ControlArray<QComboBox, boardCount> cboPlace{}; ///< host and port, device, library board
    ControlArray<QPushButton, boardCount> cmdTest{};
    ControlArray<QLabel, boardCount> lblResult{}; ///< the adapter's version, or why there is none
    QLabel *lblInstalled = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

private:
    void endProcedure() override;
    void createRow(QGridLayout &grid, int board);
    void showChoice(int board);
    void showInstalled();
    void showResult(int board, const QString &text);
    [[nodiscard]] GpibAdapterChoice choiceOf(int board) const;
    void store(int board, const GpibAdapterChoice &choice);

    Parts m_parts;
};

} // namespace corvane
