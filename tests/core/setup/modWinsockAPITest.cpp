// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/setup/modWinsockAPI.h"

#include "tests/support/ScriptedDialogs.h"

#include <QHostInfo>

using namespace corvane;

namespace {

struct WinsockApi : testing::Test
{
    hostLookup::Answer host;
    ScriptedDialogs dialogs;
    modWinsockAPI module{dialogs, [this](const QString &name) {
                             EXPECT_EQ(name, QHostInfo::localHostName().trimmed());
                             return host;
                         }};
};

} // namespace

TEST_F(WinsockApi, TheFirstIPv4AddressOfTheHostNameIsWrittenDotted)
{
    host.addresses = {QHostAddress(u"192.168.1.20"_s), QHostAddress(u"10.0.0.1"_s)};
    EXPECT_EQ(module.GetLocalIPAddress(), u"192.168.1.20");
    const hostLookup::Answer own = hostLookup::systemAnswer(u"127.0.0.1"_s);
    EXPECT_EQ(own.addresses, QList{QHostAddress(QHostAddress::LocalHost)});
    EXPECT_NE(hostLookup::systemAnswer(u"::1"_s).fault, 0) << "no IPv4 address";
}

TEST_F(WinsockApi, EachFailureShowsOneMessageAndGivesNoAddress)
{
    using enum Dialogs::Icon;
    const auto expect = [this](Dialogs::Icon icon, const QString &text) {
        dialogs.expectMessage({.text = text, .icon = icon});
    };
    for (const auto &[fault, text] :
         {std::pair(11001, "Authoritative answer host not found."),
          std::pair(11002, "Nonauthoritative host not found, or server failure."),
          std::pair(11003, "A nonrecoverable error occurred."),
          std::pair(11004, "Valid name, no data record of requested type.")}) {
        host.fault = fault;
        expect(Exclamation, QString::fromLatin1(text));
        EXPECT_EQ(module.GetLocalIPAddress(), QString());
    }

    expect(Exclamation, u"The network subsystem has failed."_s);
    module.ReportSocketError(10050);
    expect(Exclamation, u"The sockets library reported the error code 10091."_s);
    module.ReportSocketError(10091); // a code of the other table
    expect(Stop, u"The underlying network subsystem is not ready for network communication."_s);
    EXPECT_FALSE(module.SocketsInitialize(10091));
    expect(Stop, u"The sockets library could not be started (code 10093)."_s);
    EXPECT_FALSE(module.SocketsInitialize(10093));
}
