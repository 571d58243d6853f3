// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/DigitalTestsPanel.h"

#include "windows/widgets/Controls.h"

namespace corvane {

using namespace controls;

DigitalTestsPanel::DigitalTestsPanel(BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
    , m_tests(link, session)
{
    QGridLayout *grid = frame(*this, u"Automatic Tests"_s);
    using Panel = DigitalTestsPanel;
    cmdDigTestFull =
        exchanging(button(u"&Full Test"_s, u"cmdDigTestFull"_s, u"Direction and loop-back test"_s,
                          this, &Panel::cmdDigTestFull_Click));
    cmdDigTestWrite = exchanging(button(u"Write &Test"_s, u"cmdDigTestWrite"_s, u"Direction test"_s,
                                        this, &Panel::cmdDigTestWrite_Click));
    cmdDigTestRead = exchanging(button(u"Readbac&k Test"_s, u"cmdDigTestRead"_s,
                                       u"Loop-back test"_s, this, &Panel::cmdDigTestRead_Click));
    cmdDigTestAbort = button(u"&Cancel Test"_s, u"cmdDigTestAbort"_s, u"Cancel the test"_s, this,
                             &Panel::cmdDigTestAbort_Click);
    cmdDigTestAbort->setEnabled(false);
    addRow(*grid, 0, {cmdDigTestFull, cmdDigTestWrite, cmdDigTestRead, cmdDigTestAbort});
    lblChannel = readOut(5, u"lblChannel"_s, u"Port under test"_s);
    lblPData = readOut(5, u"lblPData"_s, u"Bit under test"_s);
    lblPortValue = readOut(5, u"lblPortValue"_s, u"Pattern written"_s);
    int column = 0;
    for (const auto &[caption, label] :
         {std::pair(u"Port"_s, lblChannel), std::pair(u"Bit"_s, lblPData),
          std::pair(u"Pattern"_s, lblPortValue)}) {
        label->setText(u"0"_s);
        auto *cell = new QHBoxLayout;
        cell->addWidget(new QLabel(caption));
        cell->addWidget(label, 1);
        grid->addLayout(cell, 1, column++);
    }
    lblProgress = progressLine(u"lblProgressTests"_s, u"Progress of the test"_s);
    grid->addWidget(lblProgress, 2, 0, 1, 4);
    for (int i = 0; i < grid->columnCount(); ++i)
        grid->setColumnStretch(i, 1);
    connect(&m_tests, &DigitalTests::portShown, lblChannel, &QLabel::setText);
    connect(&m_tests, &DigitalTests::stepShown, lblPData, &QLabel::setText);
    connect(&m_tests, &DigitalTests::stepShown, this,
            [this](const QString &, const QString &pattern) { lblPortValue->setText(pattern); });
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
