// Stands in for a library with the vi* functions: logs each call and does as it is told.
#include "StandIn.h"

#include <cstdint>

namespace {

std::int32_t finish(const char *function, std::int32_t success = 0)
{
    const long number = standin::failure(function);
    return number < 0 ? success : static_cast<std::int32_t>(0xBFFF0000U | number);
}

} // namespace

extern "C" {

std::int32_t viOpenDefaultRM(std::uint32_t *manager)
{
    standin::log("viOpenDefaultRM");
    *manager = 1;
    return finish("viOpenDefaultRM");
}

std::int32_t viOpen(std::uint32_t manager, const char *name, std::uint32_t mode, std::uint32_t,
                    std::uint32_t *session)
{
    standin::log("viOpen %u %s %u", manager, name, mode);
    *session = 2;
    return finish("viOpen");
}

std::int32_t viSetAttribute(std::uint32_t session, std::uint32_t attribute, std::uintptr_t value)
{
    standin::log("viSetAttribute %u %x %u", session, attribute, static_cast<unsigned>(value));
    return finish("viSetAttribute");
}

std::int32_t viWrite(std::uint32_t session, const unsigned char *bytes, std::uint32_t count,
                     std::uint32_t *written)
{
    standin::log("viWrite %u %.*s", session, static_cast<int>(count),
                 reinterpret_cast<const char *>(bytes));
    *written = count;
    return finish("viWrite");
}

std::int32_t viRead(std::uint32_t session, unsigned char *bytes, std::uint32_t count,
                    std::uint32_t *got)
{
    standin::log("viRead %u", session);
    bool last = false;
    *got = static_cast<std::uint32_t>(standin::takeReply(bytes, count, last));
    return finish("viRead", last ? 0 : 0x3FFF0006);
}

std::int32_t viClear(std::uint32_t session)
{
    standin::log("viClear %u", session);
    return finish("viClear");
}

std::int32_t viClose(std::uint32_t session)
{
    standin::log("viClose %u", session);
    return finish("viClose");
}

std::int32_t viStatusDesc(std::uint32_t, std::int32_t, char *text)
{
    std::strcpy(text, "described by the library");
    return 0;
}
}
