#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

/// What the stand-ins for GPIB libraries share. The test scripts them through environment
/// variables: STANDIN_LOG is the file that every call is written to, STANDIN_REPLY what a read
/// returns, STANDIN_DELAY how many ms a read takes, STANDIN_FAIL "function number", which function
/// fails and with which error.
namespace standin {

inline std::string setting(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

template <typename... Values>
void log(const char *format, Values... values)
{
    if (FILE *file = std::fopen(setting("STANDIN_LOG").c_str(), "a")) {
        std::fprintf(file, format, values...);
        std::fputc('\n', file);
        std::fclose(file);
    }
}

/// The number of the ordered failure when it is this function's, else -1.
inline long failure(const char *function)
{
    const std::string fail = setting("STANDIN_FAIL");
    const std::string prefix = std::string(function) + ' ';
    return fail.starts_with(prefix) ? std::strtol(fail.c_str() + prefix.size(), nullptr, 0) : -1;
}

/// Copies the next part of the reply; what does not fit stays for the next call.
inline std::size_t takeReply(void *buffer, std::size_t room, bool &last)
{
    static std::string reply;
    if (reply.empty())
        reply = setting("STANDIN_REPLY");
    const std::size_t count = reply.copy(static_cast<char *>(buffer), room);
    reply.erase(0, count);
    last = reply.empty();
    return count;
}

} // namespace standin
