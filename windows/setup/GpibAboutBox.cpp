#include "windows/setup/GpibAboutBox.h"

#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "windows/widgets/Naming.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QTimer>

namespace corvane {

namespace {

/// Long enough for the box to be painted before an adapter is asked.
constexpr int askDelayMs = 50;

QLabel *createText(const QString &name, int board)
{
    auto *label = new QLabel;
    label->setObjectName(indexed(name, board));
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

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
    for (const char16_t *title : {u"Board", u"Adapter", u"Version"})
        grid->addWidget(new QLabel(u"<b>%1</b>"_s.arg(QString::fromUtf16(title))), 0, column++);
    for (int board = 0; board < boardCount; ++board) {
        const auto at = static_cast<std::size_t>(board);
        lblAdapter[at] = createText(u"lblAdapter"_s, board);
        lblVersion[at] = createText(u"lblVersion"_s, board);
        grid->addWidget(new QLabel(u"GPIB%1"_s.arg(board)), board + 1, 0, Qt::AlignTop);
        grid->addWidget(lblAdapter[at], board + 1, 1, Qt::AlignTop);
        grid->addWidget(lblVersion[at], board + 1, 2, Qt::AlignTop);
    }
    cmdClose = new QPushButton(u"&Close"_s);
    cmdClose->setObjectName(u"cmdClose"_s);
    cmdClose->setAccessibleName(u"Close"_s);
    grid->addWidget(cmdClose, boardCount + 2, 0, 1, 3, Qt::AlignRight);
    grid->setRowStretch(boardCount + 1, 1);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 3);
    setMinimumWidth(100 * fontMetrics().averageCharWidth());
}

void GpibAboutBox::Form_Load()
{
    for (int board = 0; board < boardCount; ++board) {
        const auto at = static_cast<std::size_t>(board);
        lblAdapter[at]->setText(m_control.adapterDescription(board));
        lblVersion[at]->setText(u"..."_s);
    }
    tmrAsk->start();
}

void GpibAboutBox::tmrAsk_Timer()
{
    if (m_asking)
        return; // the box was closed and opened again inside a question that is about to end
    tmrAsk->stop();
    m_asking = true;
    const auto asked = qScopeGuard([this] { m_asking = false; });
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
    lblVersion[static_cast<std::size_t>(board)]->setText(answer);
    growToFit();
    return true;
}

void GpibAboutBox::done(int result)
{
    tmrAsk->stop();
    if (m_asking)
        m_control.cancel();
    ReopenedDialog::done(result);
}

} // namespace corvane
