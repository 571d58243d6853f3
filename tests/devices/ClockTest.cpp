// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/SystemClock.h"
#include "devices/WaitGroup.h"
#include "tests/support/Testing.h"

using namespace corvane;

TEST(SystemClock, AWaitEndsByItsConditionItsTimeOrItsGroup)
{
    SystemClock clock;
    WaitGroup group(clock);
    bool flag = false;
    const auto done = [&flag] { return flag; };
    QObject context;
    EXPECT_EQ(group.wait(0), WaitEnd::TimedOut);
    EXPECT_EQ(group.wait(-5), WaitEnd::TimedOut);
    const quint32 before = clock.MS_TIMER();
    EXPECT_EQ(group.wait(30), WaitEnd::TimedOut);
    EXPECT_GE(clock.MS_TIMER() - before, 30U);
    QTimer::singleShot(10, &context, [&flag] { flag = true; });
    EXPECT_EQ(group.waitUntil(done, Clock::forever), WaitEnd::Done);
    EXPECT_EQ(group.waitUntil(done, 0), WaitEnd::Done);
    QTimer::singleShot(10, &context, [&] {
        EXPECT_TRUE(group.isWaiting());
        EXPECT_EQ(clock.runningWaits(), 1);
        group.close();
    });
    EXPECT_EQ(group.wait(Clock::forever), WaitEnd::Cancelled);
    EXPECT_EQ(group.waitUntil(done, 1000), WaitEnd::Cancelled); // also when it is done
    EXPECT_FALSE(group.isWaiting());
    group.reopen();
    EXPECT_EQ(group.waitUntil(done, 1000), WaitEnd::Done);
}

TEST(SystemClock, NestedWaitsEndInnermostFirstAndEachByItsOwnGroup)
{
    SystemClock clock;
    WaitGroup outer(clock);
    WaitGroup inner(clock);
    std::vector<std::pair<char, WaitEnd>> ends;
    QObject context;
    QTimer::singleShot(5, &context, [&] {
        QTimer::singleShot(5, &context, [&] {
            EXPECT_EQ(clock.runningWaits(), 2);
            outer.close();
        });
        QTimer::singleShot(30, &context, [&] { inner.close(); });
        ends.emplace_back('i', inner.wait(5000));
    });
    ends.emplace_back('o', outer.wait(5000));
    EXPECT_EQ(ends, (std::vector<std::pair<char, WaitEnd>>{{'i', WaitEnd::Cancelled},
                                                           {'o', WaitEnd::Cancelled}}));
    EXPECT_EQ(clock.runningWaits(), 0);
}
