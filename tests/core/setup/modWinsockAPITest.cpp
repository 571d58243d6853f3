#include "core/setup/modWinsockAPI.h"

#include "tests/support/ScriptedDialogs.h"

#include <QHostAddress>

using namespace corvane;

namespace {

struct WinsockApi : testing::Test
{
    QHostInfo host;
    ScriptedDialogs dialogs;
    modWinsockAPI module{dialogs, [this](const QString &name) {
                             EXPECT_EQ(name, QHostInfo::localHostName().trimmed());
                             return host;
                         }};
};

} // namespace

TEST_F(WinsockApi, TheFirstIPv4AddressOfTheHostNameIsWrittenDotted)
{
    host.setAddresses(
        {QHostAddress(u"fe80::1"_s), QHostAddress(u"192.168.1.20"_s), QHostAddress(u"10.0.0.1"_s)});
    EXPECT_EQ(module.GetLocalIPAddress(), u"192.168.1.20");
}

TEST_F(WinsockApi, EachFailureShowsOneMessageAndGivesNoAddress)
{
    using enum Dialogs::Icon;
    const auto expect = [this](Dialogs::Icon icon, const QString &text) {
        dialogs.expectMessage({.text = text, .icon = icon});
    };
    expect(Exclamation, u"Valid name, no data record of requested type."_s);
    EXPECT_EQ(module.GetLocalIPAddress(), QString());
    host.setError(QHostInfo::HostNotFound);
    expect(Exclamation, u"Authoritative answer host not found."_s);
    EXPECT_EQ(module.GetLocalIPAddress(), QString());
    host.setError(QHostInfo::UnknownError);
    expect(Exclamation, u"Nonauthoritative host not found, or server failure."_s);
    EXPECT_EQ(module.GetLocalIPAddress(), QString());

    expect(Exclamation, u"The network subsystem has failed."_s);
    module.ReportSocketError(10050);
    expect(Exclamation, u"The sockets library reported the error code 10091."_s);
    module.ReportSocketError(10091); // a code of the other table
    expect(Stop, u"The underlying network subsystem is not ready for network communication."_s);
    EXPECT_FALSE(module.SocketsInitialize(10091));
    expect(Stop, u"The sockets library could not be started (code 10093)."_s);
    EXPECT_FALSE(module.SocketsInitialize(10093));
}
