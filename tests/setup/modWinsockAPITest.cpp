#include "setup/modWinsockAPI.h"

#include "setup/SocketsApi.h"
#include "tests/support/ScriptedDialogs.h"

#include <gtest/gtest.h>
#include <netdb.h>

using namespace corvane;

namespace {

class FakeSockets : public SocketsApi
{
public:
    int start(std::uint16_t version) override
    {
        calls += QStringLiteral("start %1;").arg(version);
        return startCode;
    }
    void cleanUp() override { calls += QStringLiteral("clean up;"); }
    std::optional<std::string> hostName() override { return name; }
    std::vector<Address> addresses(const std::string &host) override
    {
        calls += QStringLiteral("resolve %1;").arg(QString::fromStdString(host));
        return found;
    }
    [[nodiscard]] int lastError() const override { return errorCode; }

    QString calls;
    int startCode = 0;
    std::optional<std::string> name = "bench ";
    std::vector<Address> found{{192, 168, 1, 20}, {10, 0, 0, 1}};
    int errorCode = 0;
};

struct WinsockApi : testing::Test
{
    FakeSockets sockets;
    ScriptedDialogs dialogs;
    modWinsockAPI module{sockets, dialogs};
};

} // namespace

TEST_F(WinsockApi, TheFirstAddressOfTheTrimmedHostNameIsWrittenDotted)
{
    EXPECT_EQ(module.GetLocalIPAddress(), u"192.168.1.20");
    EXPECT_EQ(sockets.calls, u"start 257;resolve bench;clean up;");
    sockets.found = {{0, 0, 0, 255}};
    EXPECT_EQ(module.GetLocalIPAddress(), u"0.0.0.255");
}

TEST_F(WinsockApi, EachFailureShowsOneMessageAndGivesNoAddress)
{
    sockets.startCode = 10091;
    dialogs.expectMessage({.text = QStringLiteral("The underlying network subsystem is not ready "
                                                  "for network communication."),
                           .icon = Dialogs::Icon::Stop});
    EXPECT_EQ(module.GetLocalIPAddress(), QString());
    EXPECT_EQ(sockets.calls, u"start 257;") << "what did not start needs no end";

    sockets.startCode = 0;
    sockets.name.reset();
    sockets.errorCode = 10050;
    dialogs.expectMessage({.text = QStringLiteral("The network subsystem has failed."),
                           .icon = Dialogs::Icon::Exclamation});
    EXPECT_EQ(module.GetLocalIPAddress(), QString());

    sockets.name = "bench";
    sockets.found.clear();
    sockets.errorCode = 11001;
    dialogs.expectMessage({.text = QStringLiteral("Authoritative answer host not found."),
                           .icon = Dialogs::Icon::Exclamation});
    EXPECT_EQ(module.GetLocalIPAddress(), QString());
    EXPECT_TRUE(sockets.calls.endsWith(u"clean up;"));
}

TEST_F(WinsockApi, CodesOutsideTheTablesAreShownByTheirNumber)
{
    sockets.startCode = 10067;
    dialogs.expectMessage(
        {.text = QStringLiteral("The sockets library could not be started (code 10067)."),
         .icon = Dialogs::Icon::Stop});
    EXPECT_FALSE(module.SocketsInitialize());
    // A code of the other table is none of this one.
    dialogs.expectMessage(
        {.text = QStringLiteral("The sockets library reported the error code 10091."),
         .icon = Dialogs::Icon::Exclamation});
    module.ReportSocketError(10091);
}

TEST(SystemSockets, EveryAnswerOfTheLocalResolverHasACodeOfTheTable)
{
    EXPECT_EQ(socketsCodeOfResolver(EAI_NONAME, 0), 11001);
    EXPECT_EQ(socketsCodeOfResolver(EAI_AGAIN, 0), 11002);
    EXPECT_EQ(socketsCodeOfResolver(EAI_FAIL, 0), 11003);
    EXPECT_EQ(socketsCodeOfResolver(EAI_MEMORY, 0), 11003);
    EXPECT_EQ(socketsCodeOfResolver(EAI_SYSTEM, EINTR), 10004);
    EXPECT_EQ(socketsCodeOfResolver(EAI_SYSTEM, EIO), 10050);
}

TEST(SystemSockets, TheLocalResolverAnswersForRealNames)
{
    const auto sockets = systemSockets();
    EXPECT_EQ(sockets->start(257), 0);
    ASSERT_TRUE(sockets->hostName());
    EXPECT_EQ(sockets->addresses("127.0.0.1").at(0), (SocketsApi::Address{127, 0, 0, 1}));
    EXPECT_TRUE(sockets->addresses("no-such-host.invalid").empty());
    EXPECT_GE(sockets->lastError(), 11001);
    EXPECT_LE(sockets->lastError(), 11003);
    sockets->cleanUp();
}
