// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/setup/GpibAboutBox.h"

#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "windows/widgets/Controls.h"

#include <QTimer>

namespace corvane {

namespace {

/// Long enough for the box to be painted before an adapter is asked.
constexpr int askDelayMs = 50;

} // namespace

GpibAboutBox::GpibAboutBox(GpibControl &control, QWidget *parent)
    : ReopenedDialog(u"GpibAboutBox"_s, u"About the GPIB Control"_s, parent)
    , m_control(control)
{
    createControls();
    connect(tmrAsk, &QTimer::timeout, this, &GpibAboutBox::tmrAsk_Timer);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::close);
}

void GpibAboutBox::createControls()
{
    tmrAsk = new QTimer(this);
    tmrAsk->setObjectName(u"tmrAsk"_s);
    tmrAsk->setTimerType(Qt::PreciseTimer);
    tmrAsk->setInterval(askDelayMs);

    auto *grid = new QGridLayout(this);
    grid->setHorizontalSpacing(18);
    grid->setVerticalSpacing(8);
    int column = 0;
    for (const QString &title : {u"Board"_s, u"Adapter"_s, u"Version"_s})
        grid->addWidget(new QLabel(u"<b>%1</b>"_s.arg(title)), 0, column++);
    for (int board = 0; board < boardCount; ++board) {
        lblAdapter[board] = controls::note(indexed(u"lblAdapter"_s, board));
        lblVersion[board] = controls::note(indexed(u"lblVersion"_s, board));
        int cell = 0;
        for (QLabel *label :
             {new QLabel(GpibAddress::boardName(board)), lblAdapter[board], lblVersion[board]})
            grid->addWidget(label, board + 1, cell++, Qt::AlignTop);
    }
    cmdClose = named(new QPushButton(u"&Close"_s), u"cmdClose"_s);
    grid->addWidget(cmdClose, boardCount + 2, 0, 1, 3, Qt::AlignRight);
    grid->setRowStretch(boardCount + 1, 1);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 3);
    finishLayout(100);
}

void GpibAboutBox::Form_Load()
{
    for (int board = 0; board < boardCount; ++board) {
        lblAdapter[board]->setText(m_control.adapterDescription(board));
        lblVersion[board]->setText(u"..."_s);
    }
    tmrAsk->start();
}

void GpibAboutBox::tmrAsk_Timer()
{
    if (isBusy())
        return; // the box was closed and opened again inside a question that is about to end
    tmrAsk->stop();
    const auto asking = procedure();
    for (int board = 0; board < boardCount; ++board) {
        if (!ask(board))
            return;
    }
}

/// False when the box was closed meanwhile.
bool GpibAboutBox::ask(int board)
{
    QString answer;
    try {
        answer = m_control.adapterVersion(board);
    } catch (const PlatformError &fault) {
        answer = fault.description();
    }
    if (!isVisible() || tmrAsk->isActive())
        return false;
    lblVersion[board]->setText(answer);
    growToFit();
    return true;
}

void GpibAboutBox::endProcedure()
{
    tmrAsk->stop();
    if (isBusy())
        m_control.cancel();
}

} // namespace corvane
