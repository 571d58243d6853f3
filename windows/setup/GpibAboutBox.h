#pragma once

#include <QDialog>

#include <array>

class QLabel;
class QPushButton;
class QTimer;

namespace corvane {

class GpibControl;

/// The GPIB control's own about box: which adapter serves which board, and the adapter's version.
/// It only asks; frmGpibAdapters is where an adapter is chosen.
///
/// The box must not be destroyed while it asks; closed meanwhile it only hides.
class GpibAboutBox : public QDialog
{
    Q_OBJECT

public:
    static constexpr int boardCount = 4;

    /// The control must outlive the box.
    explicit GpibAboutBox(GpibControl &control, QWidget *parent = nullptr);

    /// Shows the box and asks the adapters; one that is already open comes to the front.
    void openWindow();
    /// True while an adapter is being asked.
    [[nodiscard]] bool isAsking() const { return m_asking; }

    // Event handlers
    void Form_Load();
    void tmrAsk_Timer();
    void done(int result) override;

    std::array<QLabel *, boardCount> lblAdapter{};
    std::array<QLabel *, boardCount> lblVersion{};
    QPushButton *cmdClose = nullptr;
    QTimer *tmrAsk = nullptr;

private:
    void createControls();
    [[nodiscard]] bool ask(int board);

    GpibControl &m_control;
    bool m_asking = false;
};

} // namespace corvane
