#include "core/setup/modWinsockAPI.h"

#include "core/setup/SocketsApi.h"
#include "tests/support/ScriptedDialogs.h"

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

class FakeSockets : public SocketsApi
{
public:
    int start(std::uint16_t version) override
    {
        calls += u"start %1;"_s.arg(version);
        return startCode;
    }
    void cleanUp() override { calls += u"clean up;"_s; }
    std::optional<std::string> hostName() override { return name; }
    std::vector<Address> addresses(const std::string &host) override
    {
        calls += u"resolve %1;"_s.arg(QString::fromStdString(host));
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
    const auto fails = [this](Dialogs::Icon icon, const QString &text) {
        dialogs.expectMessage({.text = text, .icon = icon});
        EXPECT_EQ(module.GetLocalIPAddress(), QString());
    };
    using enum Dialogs::Icon;
    sockets.startCode = 10091;
    fails(Stop, u"The underlying network subsystem is not ready for network communication."_s);
    sockets.startCode = 10093; // a code of the other table
    fails(Stop, u"The sockets library could not be started (code 10093)."_s);
    EXPECT_FALSE(sockets.calls.contains(u"clean up")) << "what did not start needs no end";

    sockets.startCode = 0;
    sockets.name.reset();
    sockets.errorCode = 10050;
    fails(Exclamation, u"The network subsystem has failed."_s);
    sockets.name = "bench";
    sockets.found.clear();
    sockets.errorCode = 11001;
    fails(Exclamation, u"Authoritative answer host not found."_s);
    sockets.errorCode = 10091;
    fails(Exclamation, u"The sockets library reported the error code 10091."_s);
    EXPECT_TRUE(sockets.calls.endsWith(u"clean up;"));
}

TEST(SystemSockets, AnUnknownHostHasACodeOfTheTable)
{
    const auto sockets = systemSockets();
    EXPECT_TRUE(sockets->hostName());
    EXPECT_EQ(sockets->addresses("127.0.0.1").at(0), (SocketsApi::Address{127, 0, 0, 1}));
    EXPECT_TRUE(sockets->addresses("no-such-host.invalid").empty());
    EXPECT_GE(sockets->lastError(), 11001);
    EXPECT_LE(sockets->lastError(), 11003);
}
