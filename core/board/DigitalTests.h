// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/BoardLink.h"

#include <QObject>
#include <QStringList>

namespace corvane {

class BoardLink;
class BoardSession;

/// The automatic tests of the board's four digital ports. Owns the abort flag and shows the
/// verdicts; the session's operation, the labels and the pointer are left to its panel.
class DigitalTests : public QObject
{
    Q_OBJECT

public:
    static constexpr int ports = 4;
    static constexpr int steps = 17;

    DigitalTests(BoardLink &link, BoardSession &session);

    /// Each clears the abort flag before and after.
    void runWriteTest();
    void runReadbackTest();
    void runFullTest();
    /// Ends the running test at its next check, without a verdict.
    void abort() { DigTestAbort = true; }
    [[nodiscard]] bool isAborted() const { return DigTestAbort; }

    /// The pattern of step 0..16: a walking one, a walking zero, all ones.
    static int test_data(int step);
    /// The bit number of the step, or "All".
    static QString bitText(int step);

    /// Drives the patterns through the connector from one port to another; false when one did not
    /// arrive.
    bool loopback(int outPort, int inPort);

Q_SIGNALS:
    /// The texts of lblChannel, lblPData and lblPortValue.
    void portShown(const QString &text);
    void stepShown(const QString &bit, const QString &pattern);
    /// Where the test is, or how it ended.
    void progressed(const QString &text);
    /// A test has begun, or has cleaned up: hourglass or normal pointer.
    void busyChanged(bool busy);

private:
    [[nodiscard]] bool isEnded() const;
    bool exchange(const QString &command);
    void showPort(const QString &text);
    void showProgress();
    void showStep(int step);
    /// The reply to a step's query as a number; an answer that stayed out reads as 0.
    double readValue(QString &reply);
    void noteVerdict();
    void cleanUp();

    /// Runs the tests, of so many exchanges together, and says how they ended. After an abort a
    /// test only cleans up.
    void run(int exchanges, std::initializer_list<void (DigitalTests::*)()> tests);
    void directionTest();
    bool directionSteps();
    bool directionStep(int port, int step);

    void loopbackTest();
    bool loopbackSteps();
    bool setDirections(const QStringList &values);
    bool testPair(int outPort, int inPort);

    /// Runs the sequence, which returns false when the test has ended, and gives the verdict.
    void test(const QString &name, bool (DigitalTests::*sequence)(), const QString &passed,
              const QString &failed);

    BoardLink &m_link;
    BoardLink::Method m_method = BoardLink::Ieee; ///< at the start
    BoardSession &m_session;
    bool DigTestAbort = false;
    /// The test, port and bit of the running step.
    QString m_test;
    QString m_port;
    QString m_place;
    int m_exchangesLeft = 0;
    int m_unanswered = 0;
    /// No step of the running test has failed yet.
    bool m_passed = true;
    /// The last query stayed unanswered: how long the next exchanges wait is not known.
    bool m_isSilent = false;
    QStringList m_verdicts;
};

} // namespace corvane
