// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/trend/TrendWindow.h"

#include "core/text/Dialogs.h"
#include "core/trend/TrendCsv.h"
#include "devices/FileQuestions.h"
#include "devices/WholeFile.h"
#include "windows/trend/TrendPlot.h"
#include "windows/trend/TrendTable.h"
#include "windows/widgets/BusyPointer.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/ScrollPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QTimer>

namespace corvane {

using namespace controls;

namespace {

const QString noCurves =
    u"No numbers yet. Send a command whose reply is a number, or let it loop."_s;
const QString usage =
    u"Wheel: zoom time (with Ctrl: values). Drag: move. Right button: zoom to a frame."_s;
const QString notSaved = u"The trend was not saved.\r\n"_s;

enum Time { Seconds, WallClock };

} // namespace

TrendWindow::TrendWindow(const TrendParts &parts)
    : m_series(parts.events)
    , m_dialogs(parts.dialogs)
    , m_folder(parts.folder)
{
    setObjectName(u"TrendWindow"_s);
    setWindowTitle(u"Corvane - Trend"_s);
    addControls();
    addKeys();
    plot->setWallClock(false);
    tmrRefresh = new QTimer(this);
    tmrRefresh->setInterval(hiddenMs);
    connect(tmrRefresh, &QTimer::timeout, this, &TrendWindow::tmrRefresh_Timer);
    tmrRefresh->start();
    resize(1024, 700);
}

TrendWindow::~TrendWindow() = default;

void TrendWindow::addControls()
{
    plot = named(new TrendPlot(m_series), u"plot"_s, u"Trend of the replies"_s);
    grdCurves = named(new TrendTable(m_series, *plot), u"grdCurves"_s, u"Curves"_s);
    auto *parts = named(new QSplitter(Qt::Vertical), u"splitTrend"_s, QString());
    parts->setChildrenCollapsible(false);
    parts->addWidget(makePicture());
    parts->addWidget(grdCurves);
    parts->setStretchFactor(0, 1);
    parts->setSizes({500, 160});
    lblNote = note(u"lblNote"_s, u"What is not in the curves"_s);
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(parts, 1);
    rows->addWidget(lblNote);
    ScrollPage::wrap(*this);
    showNote();
    orderTabs({plot, chkFollow, chkFit, cmdShowAll, cboTime, cmdSave, cmdClear, grdCurves});
    plot->setFocus();
}

QWidget *TrendWindow::makePicture()
{
    using W = TrendWindow;
    chkFollow = named(new QCheckBox(u"F&ollow newest"_s), u"chkFollow"_s);
    connect(chkFollow, &QCheckBox::clicked, this, &W::chkFollow_Click);
    chkFollow->setChecked(true);
    chkFollow->setToolTip(u"Keep the newest in sight (End)"_s);
    cmdShowAll = button(u"Show &All"_s, u"cmdShowAll"_s, this, &W::cmdShowAll_Click);
    cmdShowAll->setToolTip(u"All points in sight (Home, double click)"_s);
    chkFit = named(new QCheckBox(u"&Fit values"_s), u"chkFit"_s);
    chkFit->setChecked(true);
    chkFit->setToolTip(u"The value axis goes as far as the values in sight"_s);
    connect(chkFit, &QCheckBox::clicked, this, &W::chkFit_Click);
    cboTime = named(new QComboBox, u"cboTime"_s, u"Time axis"_s);
    cboTime->addItems({u"Seconds"_s, u"Wall clock"_s});
    connect(cboTime, &QComboBox::activated, this, &W::cboTime_Click);
    auto *timeLabel = new QLabel(u"&Time:"_s);
    timeLabel->setBuddy(cboTime);
    cmdSave = button(u"&Save..."_s, u"cmdSave"_s, u"Save as picture, document or table"_s, this,
                     &W::cmdSave_Click);
    cmdClear = button(u"&Clear"_s, u"cmdClear"_s, u"Forget all curves"_s, this, &W::cmdClear_Click);
    lblPointed = readOut(40, u"lblPointed"_s, u"Value under the pointer"_s);
    connect(plot, &TrendPlot::pointed, lblPointed,
            [this](const QString &text) { lblPointed->setText(text.isEmpty() ? usage : text); });
    lblPointed->setText(usage);
    connect(plot, &TrendPlot::followingChanged, chkFollow, &QCheckBox::setChecked);
    connect(plot, &TrendPlot::fittingChanged, chkFit, &QCheckBox::setChecked);
    auto *picture = new QWidget;
    auto *rows = new QVBoxLayout(picture);
    rows->setContentsMargins({});
    rows->addWidget(plot, 1);
    rows->addWidget(lblPointed);
    rows->addLayout(
        row({chkFollow, chkFit, cmdShowAll, timeLabel, cboTime, nullptr, cmdSave, cmdClear}));
    return picture;
}

void TrendWindow::addKeys()
{
    connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this,
            &QWidget::close);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this,
            &TrendWindow::cmdSave_Click);
}

void TrendWindow::tmrRefresh_Timer()
{
    const bool isMore = m_series.follow();
    if (isVisible()) {
        plot->refresh();
        grdCurves->refresh();
        showNote();
    }
    // A long recording is read in pieces between which the window answers.
    tmrRefresh->setInterval(isMore ? 0 : isVisible() ? refreshMs : hiddenMs);
}

void TrendWindow::showNote()
{
    const QString text = m_series.curves().empty() ? noCurves : m_series.note();
    if (lblNote->text() != text)
        lblNote->setText(text);
    lblNote->setVisible(!text.isEmpty());
}

void TrendWindow::chkFollow_Click()
{
    plot->setFollowing(chkFollow->isChecked());
}

void TrendWindow::cmdShowAll_Click()
{
    plot->showAll();
}

void TrendWindow::chkFit_Click()
{
    plot->setFitting(chkFit->isChecked());
}

void TrendWindow::cboTime_Click()
{
    plot->setWallClock(cboTime->currentIndex() == WallClock);
}

void TrendWindow::cmdClear_Click()
{
    m_series.clear();
    plot->setFollowing(true);
    plot->setFitting(true);
    plot->refresh();
    grdCurves->refresh();
    showNote();
}

std::optional<QByteArray> TrendWindow::fileFor(const QString &path)
{
    const BusyPointer busy;
    const QString ending = QFileInfo(path).suffix().toLower();
    if (ending == u"png")
        return plot->png();
    if (ending == u"pdf")
        return plot->pdf(windowTitle());
    if (ending == u"csv")
        return trendCsv::text(m_series);
    return std::nullopt;
}

void TrendWindow::cmdSave_Click()
{
    if (m_isSaving)
        return;
    const QScopedValueRollback saving(m_isSaving, true);
    const Dialogs::FileChoice choice = m_dialogs.saveFile(
        this, {.filter = u"Picture (*.png)|*.png|Document (*.pdf)|*.pdf|Table (*.csv)|*.csv"_s,
               .folder = m_folder,
               .name = u"trend"_s});
    if (choice.outcome == Dialogs::FileChoice::Outcome::Cancelled)
        return;
    const QString name = QDir::toNativeSeparators(choice.path);
    if (choice.outcome == Dialogs::FileChoice::Outcome::InvalidName) {
        m_dialogs.showMessage(this,
                              notSaved + name + u": "_s + fileQuestions::refusalOf(choice.path));
        return;
    }
    m_folder = QFileInfo(choice.path).path() + u'/';
    const auto bytes = fileFor(choice.path);
    const QString fault = bytes ? wholeFile::write(choice.path, *bytes)
                                : u"the name must end in .png, .pdf or .csv"_s;
    if (!fault.isEmpty())
        m_dialogs.showMessage(this, notSaved + u"%1: %2"_s.arg(name, fault));
}

void TrendWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    tmrRefresh_Timer();
}

void TrendWindow::hideEvent(QHideEvent *event)
{
    tmrRefresh->setInterval(hiddenMs);
    if (m_isSaving)
        m_dialogs.dismissAll();
    QWidget::hideEvent(event);
}

} // namespace corvane
