// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/PtyPort.h"

#include "BenchSupport.h"

#include <termios.h>

using namespace Qt::StringLiterals;

using namespace corvane::bench;

namespace {

class Pty : public testing::Test
{
protected:
    Pty()
    {
        EXPECT_TRUE(port.replug()) << port.errorString().toStdString();
        QObject::connect(&port, &ByteStream::received,
                         [this](const QByteArray &bytes) { received += bytes; });
    }

    QTemporaryDir folder;
    PtyPort port{folder.filePath(u"port"_s)};
    QByteArray received;
};

} // namespace

TEST_F(Pty, CarriesEveryByteValueBothWaysWithoutAnEchoForOneUserAfterAnother)
{
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all.append(static_cast<char>(value));
    for (int user = 0; user < 3; ++user) {
        received.clear();
        PtyUser far(port.path());
        far.send(all);
        EXPECT_TRUE(soon([&] { return received.size() >= all.size(); }));
        EXPECT_EQ(received, all);
        port.send(all);
        far.expect(all);
        if (user == 1) {
            port.dropPeer();
            EXPECT_TRUE(far.hungUp());
            port.unplug();
            port.send("lost");
            ASSERT_TRUE(port.replug());
        }
    }
}

TEST_F(Pty, KeepsWhatTheOtherEndIsSlowToTakeAndSaysWhenItIsGone)
{
    const QByteArray much(500'000, 'x');
    int drained = 0;
    QObject::connect(&port, &ByteStream::drained, [&] { ++drained; });
    PtyUser user(port.path());
    port.send(much);
    EXPECT_GT(port.backlog(), 0);
    EXPECT_EQ(drained, 0);
    user.expect(much);
    EXPECT_TRUE(soon([&] { return drained == 1; }));
    EXPECT_EQ(port.backlog(), 0);

    // Without a reader nothing grows without end, and clearing forgets it all.
    for (int i = 0; i < 10; ++i)
        port.send(much);
    EXPECT_LT(port.backlog(), 2'000'000);
    port.discardOutput();
    port.send("fresh");
    user.expect("fresh");
}

TEST_F(Pty, NeitherReplacesAFileNorRemovesAnothersLink)
{
    const QString path = folder.filePath(u"file"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    PtyPort onFile(path);
    EXPECT_FALSE(onFile.replug());
    EXPECT_TRUE(onFile.errorString().contains(path)) << onFile.errorString().toStdString();
    EXPECT_FALSE(onFile.isPlugged());

    PtyPort successor(port.path());
    ASSERT_TRUE(successor.replug());
    port.unplug();
    PtyUser user(successor.path());
    successor.send("mine");
    user.expect("mine");
}
