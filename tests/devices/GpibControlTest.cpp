// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/GpibControl.h"

#include "Faults.h"
#include "devices/SystemClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/Soon.h"
#include "windows/widgets/InputHold.h"

using namespace corvane;

class GpibControlTest : public testing::Test
{
protected:
    GpibControlTest()
    {
        auto *layout = new QVBoxLayout(window.get());
        layout->addWidget(button);
        layout->addWidget(edit);
        button->setFocusPolicy(Qt::NoFocus);
        QObject::connect(&control, &GpibControl::busyChanged, &hold, &InputHold::setCalling);
        window->show();
        activate();
        QObject::connect(button, &QPushButton::clicked, button,
                         [this] { happened += inRead ? "early" : "click "; });
        window->addAction(shortcut);
        shortcut->setShortcut(Qt::ALT | Qt::Key_S);
        QObject::connect(shortcut, &QAction::triggered, button, &QPushButton::click);
        QObject::connect(edit, &QLineEdit::textChanged, edit,
                         [this] { happened += inRead ? "early" : "key "; });
    }

    void activate()
    {
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get(), longMs));
    }

    /// Reads, and runs the action 30 ms into the read.
    template <typename Action>
    QByteArray readAnd(const Action &action, int timeoutMs = 200)
    {
        control.setTimeout(timeoutMs);
        QTimer::singleShot(30, &control, action);
        inRead = true;
        QByteArray reply = control.read();
        inRead = false;
        return reply;
    }

    /// Types and clicks as the window system would.
    void typeAndClick()
    {
        QTest::keyClick(window->windowHandle(), Qt::Key_A);
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(window.get(), button->rect().center()));
        QTest::keyClick(window->windowHandle(), Qt::Key_S, Qt::AltModifier);
    }

    /// Far longer than anything takes on the slowest machine.
    static constexpr int longMs = 30000;

    FakeGpibBus bus;
    SystemClock clock;
    GpibControl control{clock, [this](int) { return std::make_unique<FakeGpibAdapter>(bus); }};
    InputHold hold{clock};
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    QPushButton *button = new QPushButton(u"Send"_s);
    QAction *shortcut = new QAction(window.get());
    QLineEdit *edit = new QLineEdit;
    std::string happened;
    bool inRead = false;
};

TEST_F(GpibControlTest, ASecondUseIsRefusedAndCancellingEndsTheReadAtOnce)
{
    const quint32 start = clock.MS_TIMER();
    readAnd(
        [&] {
            EXPECT_TRUE(failsSaying("busy", [this] { control.write("x"); }));
            EXPECT_TRUE(control.isBusy());
            control.cancel();
        },
        longMs);
    EXPECT_FALSE(control.isBusy());
    bus.replies[u"GPIB0::0"_s].emplace_back("next");
    EXPECT_EQ(control.read(), "next");
    readAnd([this] { control.shutDown(); }, longMs);
    EXPECT_LT(clock.MS_TIMER() - start, quint32{longMs});
    EXPECT_TRUE(failsSaying("shutting down", [this] { control.read(); }));
    EXPECT_EQ(bus.calls.size(), 3);
}

TEST_F(GpibControlTest, ASendThatIsCancelledOnItsWayToTheControllerIsNotToldAsSent)
{
    int told = 0;
    QObject::connect(&control, &Transport::sent, [&told] { ++told; });
    control.write("goes");
    bus.onWrite = [this](auto &&...) {
        control.cancel();
        return std::nullopt;
    };
    control.write("cancelled");
    EXPECT_EQ(told, 1);
}

TEST_F(GpibControlTest, ClicksAndKeysWaitForTheBusAndKeepTheirOrder)
{
    readAnd([this] { typeAndClick(); });
    EXPECT_EQ(happened, "");
    control.setTimeout(50);
    inRead = true;
    EXPECT_EQ(control.read(), ""); // what was held stays held in the next call
    inRead = false;
    EXPECT_EQ(happened, "");
    typeAndClick(); // goes behind what was held
    EXPECT_TRUE(soon([this] { return happened.size() == 32; })) << happened;
    EXPECT_EQ(happened, "key click click key click click ");
    typeAndClick(); // nothing is held any more
    EXPECT_TRUE(soon([this] { return happened.size() == 48; })) << happened;
}

TEST_F(GpibControlTest, ARequestToCloseGetsThroughAndTheWindowMayGo)
{
    const quint32 start = clock.MS_TIMER();
    readAnd(
        [this] {
            typeAndClick();
            window->windowHandle()->close();
            EXPECT_FALSE(window->isVisible());
            window.reset();
            control.cancel();
        },
        longMs);
    EXPECT_TRUE(eventsRunDry());
    EXPECT_LT(clock.MS_TIMER() - start, quint32{longMs});
    EXPECT_EQ(happened, "");
}

TEST_F(GpibControlTest, ABoxOrAnotherWaitInsideACallGetsItsInput)
{
    int answer = 0;
    readAnd([&] {
        QMessageBox box(QMessageBox::NoIcon, {}, u"text"_s, QMessageBox::Ok);
        QTimer::singleShot(50, &box, [&box] {
            const QAbstractButton *ok = box.button(QMessageBox::Ok);
            QTest::mouseClick(box.windowHandle(), Qt::LeftButton, {},
                              ok->mapTo(&box, ok->rect().center()));
        });
        QTimer::singleShot(longMs, &box, &QDialog::reject);
        answer = box.exec();
    });
    EXPECT_EQ(answer, QMessageBox::Ok);

    activate();
    WaitGroup other(clock);
    readAnd([&] {
        QTimer::singleShot(20, window.get(), [this] { typeAndClick(); });
        inRead = false; // the other wait's user may act
        other.waitUntil([this] { return happened.size() == 16; }, longMs);
    });
    EXPECT_EQ(happened, "key click click ");
}
