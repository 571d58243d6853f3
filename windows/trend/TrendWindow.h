// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/trend/TrendSeries.h"
#include "windows/trend/TrendModule.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QTimer;

namespace corvane {

class TrendPlot;
class TrendTable;

/// The Trend window: numeric replies over time, as a picture and as a table, and saving both. Its
/// series goes on while the window is closed.
class TrendWindow : public QWidget
{
    Q_OBJECT

public:
    static constexpr int refreshMs = 80;
    static constexpr int hiddenMs = 1000;

    explicit TrendWindow(const TrendParts &parts);
    ~TrendWindow() override;

    void tmrRefresh_Timer();
    void chkFollow_Click();
    void cmdShowAll_Click();
    void chkFit_Click();
    void cboTime_Click();
    void cmdSave_Click();
    void cmdClear_Click();

    [[nodiscard]] const TrendSeries &series() const { return m_series; }

    TrendPlot *plot = nullptr;
    TrendTable *grdCurves = nullptr;
    QCheckBox *chkFollow = nullptr;
    QPushButton *cmdShowAll = nullptr;
    QCheckBox *chkFit = nullptr;
    QComboBox *cboTime = nullptr;
    QPushButton *cmdSave = nullptr;
    QPushButton *cmdClear = nullptr;
    QLabel *lblPointed = nullptr;
    QLabel *lblNote = nullptr;
    QTimer *tmrRefresh = nullptr;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void addControls();
    void addKeys();
    [[nodiscard]] QWidget *makePicture();
    void showNote();
    /// The file of the path's ending; nothing when there is no such kind.
    [[nodiscard]] std::optional<QByteArray> fileFor(const QString &path);

    TrendSeries m_series;
    Dialogs &m_dialogs;
    QString m_folder;
    bool m_isSaving = false;
};

} // namespace corvane
