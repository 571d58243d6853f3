#include "core/setup/SocketTexts.h"

#include "devices/Literals.h"

#include <algorithm>
#include <array>

namespace corvane::socketTexts {

namespace {

struct Text
{
    int code;
    const char16_t *text;
};

constexpr std::array startFailures{
    Text{10022, u"The Windows Sockets version specified by the "
                u"application is not supported by this DLL."},
    Text{10091, u"The underlying network subsystem is not "
                u"ready for network communication."},
    Text{10092, u"The version of Windows Sockets API support "
                u"requested is not provided by this particular "
                u"Windows Sockets implementation."},
};

constexpr std::array failures{
    Text{10004, u"A blocking Windows Socket 1.1 call was "
                u"canceled through WSACancelBlockingCall."},
    Text{10014, u"The name parameter is not a valid part of "
                u"the user address space."},
    Text{10036, u"A blocking Windows Sockets 1.1 call is in "
                u"progress, or the service provider is still "
                u"processing a callback function."},
    Text{10050, u"The network subsystem has failed."},
    Text{10093, u"A successful WSAStartup call must occur "
                u"before using this function."},
    Text{11001, u"Authoritative answer host not found."},
    Text{11002, u"Nonauthoritative host not found, or server failure."},
    Text{11003, u"A nonrecoverable error occurred."},
    Text{11004, u"Valid name, no data record of requested type."},
};

template <std::size_t size>
QString textOf(const std::array<Text, size> &table, int code, const QString &otherwise)
{
    const auto row = std::find_if(table.begin(), table.end(),
                                  [code](const Text &text) { return text.code == code; });
    return row == table.end() ? otherwise.arg(code) : QString::fromUtf16(row->text);
}

} // namespace

QString startFailure(int code)
{
    return textOf(startFailures, code, u"The sockets library could not be started (code %1)."_s);
}

QString failure(int code)
{
    return textOf(failures, code, u"The sockets library reported the error code %1."_s);
}

} // namespace corvane::socketTexts
