#include "core/setup/SocketsApi.h"

#include <algorithm>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <cerrno>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace corvane {

namespace {

constexpr std::size_t hostNameSize = 256;
constexpr int noDataRecord = 11004;

using HostName = std::array<char, hostNameSize>;

#ifdef _WIN32

class WindowsSockets : public SocketsApi
{
public:
    int start(std::uint16_t version) override
    {
        WSADATA data{};
        return WSAStartup(version, &data);
    }

    void cleanUp() override { WSACleanup(); }

    std::optional<std::string> hostName() override
    {
        HostName name{};
        if (gethostname(name.data(), static_cast<int>(name.size())) == SOCKET_ERROR) {
            m_lastError = WSAGetLastError();
            return std::nullopt;
        }
        return std::string(name.data());
    }

    std::vector<Address> addresses(const std::string &host) override
    {
        const hostent *entry = gethostbyname(host.c_str());
        if (!entry) {
            m_lastError = WSAGetLastError();
            return {};
        }
        std::vector<Address> found;
        const bool fits = entry->h_length == static_cast<short>(Address().size());
        for (char **next = entry->h_addr_list; fits && *next; ++next) {
            const auto *bytes = reinterpret_cast<const std::uint8_t *>(*next);
            std::copy_n(bytes, Address().size(), found.emplace_back().begin());
        }
        if (found.empty())
            m_lastError = noDataRecord;
        return found;
    }

    [[nodiscard]] int lastError() const override { return m_lastError; }

private:
    int m_lastError = 0;
};

using SystemSockets = WindowsSockets;

#else

class PosixSockets : public SocketsApi
{
public:
    int start(std::uint16_t) override { return 0; }

    void cleanUp() override {}

    std::optional<std::string> hostName() override
    {
        HostName name{};
        if (gethostname(name.data(), name.size() - 1) != 0) { // a cut name has no zero of its own
            m_lastError = socketsCodeOfSystem(errno);
            return std::nullopt;
        }
        return std::string(name.data());
    }

    std::vector<Address> addresses(const std::string &host) override
    {
        addrinfo wanted{};
        wanted.ai_family = AF_INET;
        wanted.ai_socktype = SOCK_STREAM;
        addrinfo *list = nullptr;
        const int result = getaddrinfo(host.c_str(), nullptr, &wanted, &list);
        if (result != 0) {
            m_lastError = socketsCodeOfResolver(result, errno);
            return {};
        }
        const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(list, &freeaddrinfo);
        std::vector<Address> found;
        for (const addrinfo *next = list; next; next = next->ai_next) {
            const auto *address = reinterpret_cast<const sockaddr_in *>(next->ai_addr);
            const auto *bytes = reinterpret_cast<const std::uint8_t *>(&address->sin_addr);
            std::copy_n(bytes, Address().size(), found.emplace_back().begin());
        }
        if (found.empty())
            m_lastError = noDataRecord;
        return found;
    }

    [[nodiscard]] int lastError() const override { return m_lastError; }

private:
    int m_lastError = 0;
};

using SystemSockets = PosixSockets;

#endif

#ifndef _WIN32

struct CodePair
{
    int system;
    int sockets;
};

template <std::size_t size>
int mapped(const std::array<CodePair, size> &table, int code, int otherwise)
{
    const auto row = std::find_if(table.begin(), table.end(),
                                  [code](const CodePair &pair) { return pair.system == code; });
    return row == table.end() ? otherwise : row->sockets;
}

#endif

} // namespace

#ifndef _WIN32

int socketsCodeOfResolver(int resolverError, int systemError)
{
    static constexpr std::array table{
        CodePair{EAI_NONAME, 11001},
        CodePair{EAI_AGAIN, 11002},
        CodePair{EAI_FAIL, 11003},
        CodePair{EAI_FAMILY, 10050},
#ifdef EAI_NODATA
        CodePair{EAI_NODATA, noDataRecord},
#endif
#ifdef EAI_ADDRFAMILY
        CodePair{EAI_ADDRFAMILY, noDataRecord},
#endif
    };
    if (resolverError == EAI_SYSTEM)
        return socketsCodeOfSystem(systemError);
    return mapped(table, resolverError, 11003);
}

int socketsCodeOfSystem(int systemError)
{
    static constexpr std::array table{
        CodePair{EINTR, 10004},
        CodePair{EFAULT, 10014},
        CodePair{ENAMETOOLONG, 10014},
        CodePair{EINPROGRESS, 10036},
    };
    return mapped(table, systemError, 10050);
}

#endif

std::unique_ptr<SocketsApi> systemSockets()
{
    return std::make_unique<SystemSockets>();
}

} // namespace corvane
