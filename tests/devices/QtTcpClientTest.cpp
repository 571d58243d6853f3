// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/QtTcpClient.h"

#include "Faults.h"
#include "tests/support/Soon.h"

#include <QTcpServer>

#include <sys/socket.h>

using namespace corvane;

class QtTcpClientTest : public testing::Test
{
protected:
    QtTcpClientTest()
    {
        EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
        client.setRemoteHost(u" 127.0.0.1 "_s);
        client.setRemotePort(server.serverPort());
        QObject::connect(&client, &TcpClient::stateChanged, &client,
                         [this] { states.push_back(static_cast<int>(client.state())); });
    }

    /// Connects and gives the server's end.
    QTcpSocket &connected()
    {
        client.connectToPeer();
        EXPECT_TRUE(soon([this] {
            return client.state() == SocketState::Connected && server.hasPendingConnections();
        }));
        return *server.nextPendingConnection();
    }

    bool reaches(SocketState state)
    {
        return soon([this, state] { return client.state() == state; });
    }

    QTcpServer server;
    QtTcpClient client{200};
    QSignalSpy errors{&client, &TcpClient::errorOccurred};
    QSignalSpy arrivals{&client, &TcpClient::dataArrived};
    std::vector<int> states;
};

TEST_F(QtTcpClientTest, ConnectsExchangesAndClosesThroughItsStatesInOrder)
{
    QTcpSocket &far = connected();
    EXPECT_EQ(states, (std::vector{4, 5, 6, 7}));
    EXPECT_THROW(client.connectToPeer(), PlatformError);
    client.sendData(QByteArray("\0\xff?\r", 4));
    EXPECT_TRUE(soon([&far] { return far.bytesAvailable() == 4; }));
    EXPECT_EQ(far.readAll(), QByteArray("\0\xff?\r", 4));
    far.write("reply");
    EXPECT_TRUE(soon([this] { return !arrivals.empty(); }));
    EXPECT_EQ(client.getData(), "reply");
    EXPECT_EQ(client.getData(), "");
    client.close();
    client.close();
    EXPECT_EQ(states, (std::vector{4, 5, 6, 7, 0}));
    EXPECT_THROW(client.sendData("x"), PlatformError);
    EXPECT_TRUE(soon([&far] { return far.state() == QTcpSocket::UnconnectedState; }));
    EXPECT_TRUE(errors.empty());
}

TEST_F(QtTcpClientTest, APeerThatClosesIsNoErrorAndItsLastWordsStayReadable)
{
    for (const bool reset : {false, true}) {
        arrivals.clear();
        states.clear();
        QTcpSocket &far = connected();
        far.write("bye");
        far.flush();
        if (reset) {
            EXPECT_TRUE(soon([this] { return !arrivals.empty(); }));
            const linger atOnce = {1, 0};
            setsockopt(static_cast<int>(far.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce,
                       sizeof atOnce);
            far.abort();
        } else {
            far.disconnectFromHost();
        }
        EXPECT_TRUE(reaches(SocketState::PeerClosing) && eventsRunDry());
        EXPECT_EQ(client.wasReset(), reset);
        EXPECT_EQ(states, (std::vector{4, 5, 6, 7, 8}));
        EXPECT_GE(arrivals.size(), 1);
        EXPECT_EQ(client.getData(), "bye");
        EXPECT_THROW(client.sendData("x"), PlatformError);
        EXPECT_TRUE(errors.empty());
        client.close();
        EXPECT_EQ(client.state(), SocketState::Closed);
    }
}

TEST_F(QtTcpClientTest, AFailureToConnectIsReportedOnceWithItsNumber)
{
    const std::tuple<const char *, int, const char *> rows[] = {
        {"127.0.0.1", 10061, "127.0.0.1 port"}, {"not a host", 11001, "no such host"}};
    server.close();
    QtTcpClient patient;
    QSignalSpy reports(&patient, &TcpClient::errorOccurred);
    for (const auto &[host, number, said] : rows) {
        reports.clear();
        patient.setRemoteHost(QLatin1String(host));
        patient.setRemotePort(client.remotePort());
        patient.connectToPeer();
        EXPECT_TRUE(soon([&reports] { return !reports.empty(); }) && eventsRunDry()) << host;
        ASSERT_EQ(reports.size(), 1) << host;
        EXPECT_EQ(reports[0][0].toInt(), number) << host;
        EXPECT_TRUE(reports[0][1].toString().contains(QLatin1String(said))) << host;
        EXPECT_EQ(patient.state(), SocketState::Error);
        patient.close();
    }
}

TEST_F(QtTcpClientTest, APeerThatNeverAnswersTimesOutAndCanBeGivenUp)
{
    // A listener whose queue is full neither takes nor refuses a connection.
    QTcpServer deaf;
    deaf.setListenBacklogSize(1);
    deaf.listen(QHostAddress::LocalHost);
    deaf.pauseAccepting();
    QTcpSocket fillers[2];
    for (QTcpSocket &filler : fillers) {
        filler.connectToHost(QHostAddress::LocalHost, deaf.serverPort());
        EXPECT_TRUE(soon([&filler] { return filler.state() == QTcpSocket::ConnectedState; }));
    }
    client.setRemotePort(deaf.serverPort());
    client.connectToPeer();
    EXPECT_TRUE(reaches(SocketState::Connecting));
    client.close();
    EXPECT_EQ(client.state(), SocketState::Closed);
    // A later attempt of another client times out, and nothing was heard of the first.
    QtTcpClient other{200};
    QSignalSpy later(&other, &TcpClient::errorOccurred);
    other.setRemoteHost(client.remoteHost());
    other.setRemotePort(client.remotePort());
    other.connectToPeer();
    EXPECT_TRUE(soon([&later] { return !later.empty(); }));
    EXPECT_TRUE(errors.empty());

    client.connectToPeer();
    EXPECT_TRUE(soon([this] { return !errors.empty(); }));
    EXPECT_EQ(errors[0][0].toInt(), 10060);
    EXPECT_EQ(client.state(), SocketState::Error);
}

TEST_F(QtTcpClientTest, TriesEachAddressOfAHost)
{
    QtTcpClient named(5000, [](const QString &) {
        return QList{QHostAddress(QHostAddress::LocalHostIPv6),
                     QHostAddress(QHostAddress::LocalHost)};
    });
    named.setRemoteHost(u"chamber"_s);
    named.setRemotePort(server.serverPort()); // it listens at the second address only
    named.connectToPeer();
    EXPECT_TRUE(soon([&] { return named.state() == SocketState::Connected; }));
}

TEST_F(QtTcpClientTest, ASilentNameServerIsSaidAndHoldsNothingUp)
{
    const auto answer = std::make_shared<QSemaphore>();
    const auto asked = std::make_shared<QSemaphore>();
    const auto silent = [answer, asked](const QString &) {
        asked->release();
        answer->acquire();
        return QList<QHostAddress>();
    };
    {
        QtTcpClient waiting(200, silent);
        QSignalSpy reports(&waiting, &TcpClient::errorOccurred);
        waiting.setRemoteHost(u"chamber"_s);
        waiting.setRemotePort(1);
        waiting.connectToPeer();
        EXPECT_TRUE(soon([&] { return !reports.empty(); }));
        EXPECT_EQ(reports[0][0].toInt(), 11002);
        waiting.close();
        waiting.connectToPeer();
        asked->acquire(2); // both threads are in the resolver, which never returns
    }
    answer->release(2);
}

TEST_F(QtTcpClientTest, AFailureIsNotReportedAfterClosing)
{
    server.close();
    client.connectToPeer();
    QObject::connect(&client, &TcpClient::stateChanged, &client, [this] {
        if (client.state() == SocketState::Error)
            client.close();
    });
    EXPECT_TRUE(reaches(SocketState::Closed) && eventsRunDry());
    EXPECT_TRUE(errors.empty());
}

TEST_F(QtTcpClientTest, APeerThatCannotBeTriedIsRefusedAtOnce)
{
    for (const int port : {0, -1, 65536, 70000}) {
        client.setRemotePort(port);
        EXPECT_TRUE(failsSaying("1 to 65535", [this] { client.connectToPeer(); }));
    }
    client.setRemotePort(1);
    client.setRemoteHost(u"  "_s);
    EXPECT_TRUE(failsSaying("host is empty", [this] { client.connectToPeer(); }));
    EXPECT_EQ(client.state(), SocketState::Closed);
    EXPECT_EQ(client.getData(), "");
}

TEST_F(QtTcpClientTest, AFloodComesInBoundedArrivalsToItsLastByteAndUnsentBytesAreBounded)
{
    QTcpSocket &far = connected();
    QByteArray received;
    QObject::connect(&client, &TcpClient::dataArrived, &client, [&] {
        const QByteArray arrival = client.getData();
        EXPECT_LE(arrival.size(), QtTcpClient::mostAtOnce);
        received += arrival;
    });
    const QByteArray flood = QByteArray(9'999'999, 'x') + '!';
    far.write(flood);
    far.disconnectFromHost();
    EXPECT_TRUE(reaches(SocketState::PeerClosing));
    EXPECT_TRUE(received == flood && !client.wasReset());
    client.close();

    connected().setReadBufferSize(1); // it stops reading
    const QByteArray megabyte(1'000'000, 'x');
    EXPECT_TRUE(failsSaying("takes no more data", [&] {
        for (int sent = 0; sent < 60; ++sent) {
            client.sendData(megabyte);
            QTest::qWait(0);
        }
    }));
}
