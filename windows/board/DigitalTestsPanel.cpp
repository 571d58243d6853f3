#include "windows/board/DigitalTestsPanel.h"

#include "core/board/BoardSession.h"
#include "windows/widgets/Controls.h"

#include <QGridLayout>
#include <QGroupBox>

#include <array>

namespace corvane {

using namespace controls;

DigitalTestsPanel::DigitalTestsPanel(BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
    , m_tests(link, session)
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    auto *box = new QGroupBox(u"Automatic Tests"_s);
    outer->addWidget(box);
    auto *grid = new QGridLayout(box);
    cmdDigTestFull =
        exchanging(button(u"&Full Test"_s, u"cmdDigTestFull"_s, u"Direction and loop-back test"_s));
    cmdDigTestWrite =
        exchanging(button(u"Write &Test"_s, u"cmdDigTestWrite"_s, u"Direction test"_s));
    cmdDigTestRead =
        exchanging(button(u"Readbac&k Test"_s, u"cmdDigTestRead"_s, u"Loop-back test"_s));
    cmdDigTestAbort = button(u"&Cancel Test"_s, u"cmdDigTestAbort"_s, u"Cancel the test"_s);
    cmdDigTestAbort->setEnabled(false);
    const QString rest = u"0"_s;
    lblChannel = readOut(5, u"lblChannel"_s, u"Port under test"_s);
    lblPData = readOut(5, u"lblPData"_s, u"Bit under test"_s);
    lblPortValue = readOut(5, u"lblPortValue"_s, u"Pattern written"_s);
    const std::array<std::pair<QString, QLabel *>, 3> labels = {
        {{u"Port"_s, lblChannel}, {u"Bit"_s, lblPData}, {u"Pattern"_s, lblPortValue}}};
    int column = 0;
    for (QPushButton *action : {cmdDigTestFull, cmdDigTestWrite, cmdDigTestRead, cmdDigTestAbort})
        grid->addWidget(action, 0, column++);
    column = 0;
    for (const auto &[caption, label] : labels) {
        label->setText(rest);
        auto *cell = new QHBoxLayout;
        cell->addWidget(new QLabel(caption));
        cell->addWidget(label, 1);
        grid->addLayout(cell, 1, column++);
    }
    lblProgress = progressLine(u"lblProgressTests"_s, u"Progress of the test"_s);
    grid->addWidget(lblProgress, 2, 0, 1, 4);
    for (int i = 0; i < grid->columnCount(); ++i)
        grid->setColumnStretch(i, 1);
    connect(cmdDigTestFull, &QPushButton::clicked, this, &DigitalTestsPanel::cmdDigTestFull_Click);
    connect(cmdDigTestWrite, &QPushButton::clicked, this,
            &DigitalTestsPanel::cmdDigTestWrite_Click);
    connect(cmdDigTestRead, &QPushButton::clicked, this, &DigitalTestsPanel::cmdDigTestRead_Click);
    connect(cmdDigTestAbort, &QPushButton::clicked, this,
            &DigitalTestsPanel::cmdDigTestAbort_Click);
    connect(&m_tests, &DigitalTests::portShown, lblChannel, &QLabel::setText);
    connect(&m_tests, &DigitalTests::stepShown, this,
            [this](const QString &bit, const QString &pattern) {
                lblPData->setText(bit);
                lblPortValue->setText(pattern);
            });
    connect(&m_tests, &DigitalTests::progressed, this,
            [this](const QString &text) { showText(*lblProgress, text); });
    connect(&m_tests, &DigitalTests::busyChanged, this, &DigitalTestsPanel::showBusy);
}

void DigitalTestsPanel::cmdDigTestFull_Click()
{
    run(&DigitalTests::runFullTest);
}

void DigitalTestsPanel::cmdDigTestWrite_Click()
{
    run(&DigitalTests::runWriteTest);
}

void DigitalTestsPanel::cmdDigTestRead_Click()
{
    run(&DigitalTests::runReadbackTest);
}

void DigitalTestsPanel::cmdDigTestAbort_Click()
{
    m_tests.abort();
}

void DigitalTestsPanel::run(void (DigitalTests::*test)())
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
    showBusy(true);
    cmdDigTestAbort->setEnabled(true);
    cmdDigTestAbort->setFocus();
    (m_tests.*test)();
    if (cmdDigTestAbort->hasFocus())
        setFocus();
    cmdDigTestAbort->setEnabled(false);
    showBusy(false);
}

void DigitalTestsPanel::showBusy(bool busy)
{
    if (busy)
        window()->setCursor(Qt::WaitCursor);
    else
        window()->unsetCursor();
}

} // namespace corvane
