// SPDX-License-Identifier: GPL-3.0-or-later
// Stands in for the libraries with the ib* and the vi* functions. Every call is written to the file
// STANDIN_LOG; STANDIN_REPLY is what a read returns, as long as the file STANDIN_HOLD exists it
// does not return, and STANDIN_FAIL, "function number", is which function fails and with which
// error.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

namespace {

std::string setting(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

/// Logs a call; gives the number of the failure ordered for its function, else -1.
template <typename... Values>
long called(const std::string &function, const std::string &format, Values... values)
{
    FILE *file = std::fopen(setting("STANDIN_LOG").c_str(), "a");
    std::fprintf(file, (function + ' ' + format + '\n').c_str(), values...);
    std::fclose(file);
    const std::string fail = setting("STANDIN_FAIL");
    const bool ordered = fail.starts_with(function + ' ');
    return ordered ? std::strtol(fail.c_str() + function.size(), nullptr, 0) : -1;
}

/// Copies the next part of the reply; what does not fit stays for the next call.
long takeReply(void *buffer, std::size_t room, bool &last)
{
    static std::string reply;
    while (std::filesystem::exists(setting("STANDIN_HOLD")))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (reply.empty())
        reply = setting("STANDIN_REPLY");
    const auto count = reply.copy(static_cast<char *>(buffer), room);
    reply.erase(0, count);
    last = reply.empty();
    return static_cast<long>(count);
}

thread_local int status = 0;
thread_local int error = 0;
thread_local long moved = 0;

/// Ends an ib* call; errno of a system error stands above the error's number.
int ibEnd(long failure, long count = 0, int flags = 0x100)
{
    status = failure < 0 ? flags : flags | 0x8000;
    error = static_cast<int>(failure & 0xff);
    moved = failure < 0 ? count : std::max(count, failure >> 8);
    return status;
}

std::int32_t viEnd(long failure, std::int32_t success = 0)
{
    return failure < 0 ? success : static_cast<std::int32_t>(0xBFFF0000U | failure);
}

} // namespace

extern "C" {

int ibdev(int board, int pad, int sad, int tmo, int eot, int eos)
{
    const char *const format = "%d %d %d %d %d %d";
    return ibEnd(called("ibdev", format, board, pad, sad, tmo, eot, eos)) & 0x8000 ? -1 : 100 + pad;
}
int ibonl(int ud, int online)
{
    return ibEnd(called("ibonl", "%d %d", ud, online));
}
int ibclr(int ud)
{
    return ibEnd(called("ibclr", "%d", ud));
}
int ibconfig(int ud, int option, int value)
{
    return ibEnd(called("ibconfig", "%d %d %d", ud, option, value));
}
int ibwrt(int ud, const void *bytes, long count)
{
    const auto *const text = static_cast<const char *>(bytes);
    return ibEnd(called("ibwrt", "%d %.*s", ud, static_cast<int>(count), text), count);
}
int ibrd(int ud, void *bytes, long count)
{
    bool last = false;
    const long got = takeReply(bytes, static_cast<std::size_t>(count), last);
    const long failure = called("ibrd", "%d", ud); // a read that fails has seen no end
    return ibEnd(failure, got, last && failure < 0 ? 0x2100 : 0x100);
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

std::int32_t viOpenDefaultRM(std::uint32_t *manager)
{
    *manager = 1;
    return viEnd(called("viOpenDefaultRM", "%u", *manager));
}
std::int32_t viOpen(std::uint32_t manager, const char *name, std::uint32_t mode, std::uint32_t,
                    std::uint32_t *session)
{
    *session = 2;
    return viEnd(called("viOpen", "%u %s %u", manager, name, mode));
}
std::int32_t viSetAttribute(std::uint32_t session, std::uint32_t attribute, std::uintptr_t value)
{
    return viEnd(called("viSetAttribute", "%u %x %lu", session, attribute, value));
}
std::int32_t viWrite(std::uint32_t session, const char *bytes, std::uint32_t count, std::uint32_t *)
{
    return viEnd(called("viWrite", "%u %.*s", session, static_cast<int>(count), bytes));
}
std::int32_t viRead(std::uint32_t session, char *bytes, std::uint32_t count, std::uint32_t *got)
{
    bool last = false;
    *got = static_cast<std::uint32_t>(takeReply(bytes, count, last));
    return viEnd(called("viRead", "%u", session), last ? 0 : 0x3FFF0006);
}
std::int32_t viClear(std::uint32_t session)
{
    return viEnd(called("viClear", "%u", session));
}
std::int32_t viClose(std::uint32_t session)
{
    return viEnd(called("viClose", "%u", session));
}
std::int32_t viStatusDesc(std::uint32_t, std::int32_t, char *text)
{
    std::snprintf(text, 256, "described by the library");
    return 0;
}
}
