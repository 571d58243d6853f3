// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/DigitalTests.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
#include "core/board/BoardTexts.h"
#include "core/text/Numbers.h"
#include "core/text/ShownText.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr qint16 settleMs = 25;
constexpr int bits = 8;
constexpr int exchangeMs = 150; // the link's own waits and settleMs
constexpr int directionExchanges = DigitalTests::ports * DigitalTests::steps * 2;
constexpr int loopbackExchanges = 2 * 4 + 4 * DigitalTests::steps * 2;

} // namespace

DigitalTests::DigitalTests(BoardLink &link, BoardSession &session)
    : m_link(link)
    , m_session(session)
{
}

void DigitalTests::runWriteTest()
{
    run(directionExchanges, {&DigitalTests::directionTest});
}

void DigitalTests::runReadbackTest()
{
    run(loopbackExchanges, {&DigitalTests::loopbackTest});
}

void DigitalTests::runFullTest()
{
    run(directionExchanges + loopbackExchanges,
        {&DigitalTests::directionTest, &DigitalTests::loopbackTest});
}

void DigitalTests::run(int exchanges, std::initializer_list<void (DigitalTests::*)()> tests)
{
    DigTestAbort = false;
    m_exchangesLeft = exchanges;
    m_isSilent = false;
    m_verdicts.clear();
    m_method = m_link.method();
    for (const auto test : tests)
        (this->*test)();
    const QString fault = m_session.fault().simplified();
    if (!fault.isEmpty())
        m_verdicts << boardTexts::stoppedAt.arg(m_place, fault);
    else if (isEnded())
        m_verdicts << boardTexts::cancelledAt.arg(m_place);
    Q_EMIT progressed(m_verdicts.join(u"; "_s));
    DigTestAbort = false;
}

void DigitalTests::noteVerdict()
{
    QString verdict = (m_passed ? boardTexts::testPassed : boardTexts::testFailed).arg(m_test);
    if (m_unanswered > 0)
        verdict += boardTexts::testUnanswered.arg(m_unanswered);
    if (m_link.method() != m_method)
        verdict += u", but "_s + boardTexts::methodChanged;
    m_verdicts << verdict;
}

double DigitalTests::readValue(QString &reply)
{
    m_link.InputFromSbc(reply);
    m_isSilent = reply.isEmpty();
    if (m_isSilent)
        ++m_unanswered;
    return numbers::leadingNumber(reply);
}

int DigitalTests::test_data(int step)
{
    const int value = step < bits ? 1 << step : ~(1 << (step - bits));
    return value & 0xFF;
}

QString DigitalTests::bitText(int step)
{
    return step == steps - 1 ? u"All"_s : QString::number(step % bits);
}

bool DigitalTests::isEnded() const
{
    return DigTestAbort || m_session.isStopped();
}

/// Sends a command and gives the board its time; false when the test has ended.
bool DigitalTests::exchange(const QString &command)
{
    if (isEnded())
        return false;
    showProgress();
    --m_exchangesLeft;
    QString sent = command;
    m_link.OutputToSbc(sent, [this] { return isEnded(); });
    m_link.PauseMS(settleMs);
    return !isEnded();
}

void DigitalTests::showProgress()
{
    Q_EMIT progressed(boardTexts::progress(
        m_place, m_isSilent ? std::nullopt : std::optional(m_exchangesLeft * exchangeMs)));
}

void DigitalTests::showStep(int step)
{
    Q_EMIT stepShown(bitText(step), QString::number(test_data(step)));
    m_place = boardTexts::testStep.arg(m_test, m_port, bitText(step));
}

void DigitalTests::showPort(const QString &text)
{
    m_port = text;
    Q_EMIT portShown(text);
}

void DigitalTests::cleanUp()
{
    const QString rest = u"0"_s;
    Q_EMIT portShown(rest);
    Q_EMIT stepShown(rest, rest);
    Q_EMIT busyChanged(false);
}

void DigitalTests::test(const QString &name, bool (DigitalTests::*sequence)(),
                        const QString &passed, const QString &failed)
{
    if (!isEnded()) {
        Q_EMIT busyChanged(true);
        m_test = m_place = name;
        m_unanswered = 0;
        m_passed = true;
        if ((this->*sequence)()) {
            noteVerdict();
            m_session.say(m_passed ? passed : failed);
        }
    }
    cleanUp();
}

void DigitalTests::directionTest()
{
    test(boardTexts::writeTest, &DigitalTests::directionSteps, boardTexts::writeTestPassed,
         boardTexts::writeTestFailed);
}

bool DigitalTests::directionSteps()
{
    for (int port = 0; port < ports; ++port) {
        showPort(QString::number(port));
        for (int step = 0; step < steps; ++step) {
            if (!directionStep(port, step))
                return false;
        }
    }
    return true;
}

bool DigitalTests::directionStep(int port, int step)
{
    if (isEnded())
        return false;
    showStep(step);
    const int pattern = test_data(step);
    if (!exchange(u"PORT:DIR %1,%2"_s.arg(port).arg(pattern)) ||
        !exchange(u"PORT:DIR? %1"_s.arg(port)))
        return false;
    QString reply;
    const double value = readValue(reply);
    if (!isEnded() && value != pattern) {
        m_passed = false;
        m_session.say(boardTexts::directionFailed.arg(QString::number(port), shownText(reply),
                                                      QString::number(step)));
    }
    return !isEnded();
}

bool DigitalTests::loopback(int outPort, int inPort)
{
    showPort(u"%1 > %2"_s.arg(outPort).arg(inPort));
    bool passed = true;
    for (int step = 0; step < steps && !isEnded(); ++step) {
        showStep(step);
        if (!exchange(u"PORT:DATA %1,%2"_s.arg(outPort).arg(test_data(step))) ||
            !exchange(u"PORT:DATA? %1"_s.arg(inPort)))
            break;
        QString reply;
        if (readValue(reply) != test_data(step))
            passed = false;
    }
    return passed;
}

void DigitalTests::loopbackTest()
{
    test(boardTexts::readbackTest, &DigitalTests::loopbackSteps, boardTexts::loopBackPassed,
         boardTexts::loopBackFailed);
}

/// The connector joins port 0 with port 2 and port 1 with port 3; a port drives its pins at 255
/// and reads them at 0.
bool DigitalTests::loopbackSteps()
{
    showProgress(); // no end of an earlier test stands beside the box
    m_session.say(boardTexts::installLoopBack);
    return setDirections({u"0,0"_s, u"3,0"_s, u"1,255"_s, u"2,255"_s}) && testPair(2, 0) &&
           testPair(1, 3) && setDirections({u"0,255"_s, u"3,255"_s, u"1,0"_s, u"2,0"_s}) &&
           testPair(0, 2) && testPair(3, 1);
}

bool DigitalTests::setDirections(const QStringList &values)
{
    return std::all_of(values.begin(), values.end(), [this](const QString &value) {
        m_place = boardTexts::testDirections.arg(m_test);
        return exchange(u"PORT:DIR "_s + value);
    });
}

bool DigitalTests::testPair(int outPort, int inPort)
{
    if (!loopback(outPort, inPort) && !isEnded()) {
        m_passed = false;
        m_session.say(boardTexts::loopBackError);
    }
    return !isEnded();
}

} // namespace corvane
