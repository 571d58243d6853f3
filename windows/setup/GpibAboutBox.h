// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/widgets/ControlArray.h"
#include "windows/widgets/ReopenedDialog.h"

class QLabel;
class QPushButton;
class QTimer;

namespace corvane {

class GpibControl;

/// The GPIB control's own about box: which adapter serves which board, and the adapter's version.
/// It only asks; frmGpibAdapters is where an adapter is chosen.
class GpibAboutBox : public ReopenedDialog
{
    Q_OBJECT

public:
    static constexpr int boardCount = 4;

    /// The control must outlive the box.
    explicit GpibAboutBox(GpibControl &control, QWidget *parent = nullptr);

    // Event handlers
    void Form_Load() override;
    void tmrAsk_Timer();

    ControlArray<QLabel, boardCount> lblAdapter{};
    ControlArray<QLabel, boardCount> lblVersion{};
    QPushButton *cmdClose = nullptr;
    QTimer *tmrAsk = nullptr;

private:
    void createControls();
    void endProcedure() override;
    [[nodiscard]] bool ask(int board);

    GpibControl &m_control;
};

} // namespace corvane
