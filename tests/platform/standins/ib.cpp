// Stands in for a library with the ib* functions: logs each call and does as it is told.
#include "StandIn.h"

#include <chrono>
#include <thread>

namespace {

thread_local int status = 0;
thread_local int error = 0;
thread_local long moved = 0;

int finish(const char *function, long count, int flags = 0x100)
{
    const long number = standin::failure(function);
    status = number < 0 ? flags : flags | 0x8000;
    error = static_cast<int>(number & 0xff);
    moved = number < 0 ? count : std::max(count, number >> 8);
    return status;
}

} // namespace

extern "C" {

int ibdev(int board, int pad, int sad, int tmo, int eot, int eos)
{
    standin::log("ibdev %d %d %d %d %d %d", board, pad, sad, tmo, eot, eos);
    finish("ibdev", 0);
    return (status & 0x8000) != 0 ? -1 : 100 + pad;
}

int ibonl(int ud, int online)
{
    standin::log("ibonl %d %d", ud, online);
    return finish("ibonl", 0);
}

int ibclr(int ud)
{
    standin::log("ibclr %d", ud);
    return finish("ibclr", 0);
}

int ibconfig(int ud, int option, int value)
{
    standin::log("ibconfig %d %d %d", ud, option, value);
    return finish("ibconfig", 0);
}

int ibwrt(int ud, const void *bytes, long count)
{
    standin::log("ibwrt %d %.*s", ud, static_cast<int>(count), static_cast<const char *>(bytes));
    return finish("ibwrt", count);
}

int ibrd(int ud, void *bytes, long count)
{
    standin::log("ibrd %d", ud);
    std::this_thread::sleep_for(
        std::chrono::milliseconds(std::atoi(standin::setting("STANDIN_DELAY").c_str())));
    bool last = false;
    const auto got = standin::takeReply(bytes, static_cast<std::size_t>(count), last);
    return finish("ibrd", static_cast<long>(got), last ? 0x2100 : 0x100);
}

int ThreadIbsta()
{
    return status;
}

int ThreadIberr()
{
    return error;
}

long ThreadIbcntl()
{
    return moved;
}

const char *gpib_error_string(int)
{
    return "";
}
}
