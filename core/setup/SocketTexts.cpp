// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/setup/SocketTexts.h"

#include "devices/Literals.h"

#include <QMap>

namespace corvane::socketTexts {

namespace {

const QMap<int, QString> startFailures{
    {10022, u"The Windows Sockets version specified by the "
            u"application is not supported by this DLL."_s},
    {10091, u"The underlying network subsystem is not "
            u"ready for network communication."_s},
    {10092, u"The version of Windows Sockets API support "
            u"requested is not provided by this particular "
            u"Windows Sockets implementation."_s},
};

const QMap<int, QString> failures{
    {10004, u"A blocking Windows Socket 1.1 call was "
            u"canceled through WSACancelBlockingCall."_s},
    {10014, u"The name parameter is not a valid part of "
            u"the user address space."_s},
    {10036, u"A blocking Windows Sockets 1.1 call is in "
            u"progress, or the service provider is still "
            u"processing a callback function."_s},
    {10050, u"The network subsystem has failed."_s},
    {10093, u"A successful WSAStartup call must occur "
            u"before using this function."_s},
    {11001, u"Authoritative answer host not found."_s},
    {11002, u"Nonauthoritative host not found, or server failure."_s},
    {11003, u"A nonrecoverable error occurred."_s},
    {11004, u"Valid name, no data record of requested type."_s},
};

} // namespace

QString startFailure(int code)
{
    return startFailures.value(code,
                               u"The sockets library could not be started (code %1)."_s.arg(code));
}

QString failure(int code)
{
    return failures.value(code, u"The sockets library reported the error code %1."_s.arg(code));
}

} // namespace corvane::socketTexts
