#pragma once

#include "perf/Harness.h"

#include <csignal>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace corvane::perf {

/// What a program took, from its start to its end.
struct Usage
{
    int exitCode = -1; ///< 127: it could not be started; 128 + n: ended by signal n
    double seconds = 0;
    double processorSeconds = 0;
    double peakBytes = 0;
    std::string output; ///< its standard output
};

/// Another program, measured: a peer to hold a figure against, or a process that has to start anew.
/// Its standard input is empty, its standard error is ours. It is ended with the object.
class Child
{
public:
    explicit Child(const std::vector<std::string> &command)
        : m_start(now())
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            return;
        m_pid = fork();
        if (m_pid == 0)
            become(command, ends[1]);
        close(ends[1]);
        m_output = ends[0];
    }
    ~Child()
    {
        end();
        if (m_output >= 0)
            close(m_output);
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    /// Waits until it has printed the text. False when it ended without.
    bool waitForOutput(const std::string &text)
    {
        while (m_text.find(text) == std::string::npos) {
            if (!readMore())
                return false;
        }
        return true;
    }
    /// Waits until it ends by itself.
    Usage finish()
    {
        while (readMore()) {
        }
        return collect();
    }
    /// Ends it with a signal.
    Usage end(int signal = SIGTERM)
    {
        if (m_pid > 0)
            kill(m_pid, signal);
        return collect();
    }

private:
    [[noreturn]] static void become(const std::vector<std::string> &command, int output)
    {
        std::vector<char *> arguments;
        arguments.reserve(command.size() + 1);
        for (const std::string &argument : command)
            arguments.push_back(const_cast<char *>(argument.c_str()));
        arguments.push_back(nullptr);
        dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
        dup2(output, STDOUT_FILENO);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    bool readMore()
    {
        char buffer[4096];
        const ssize_t size = read(m_output, buffer, sizeof buffer);
        if (size > 0)
            m_text.append(buffer, static_cast<size_t>(size));
        return size > 0;
    }
    Usage collect()
    {
        if (m_pid <= 0)
            return m_usage;
        int status = 0;
        rusage used{};
        wait4(m_pid, &status, 0, &used);
        m_pid = -1;
        m_usage = {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
                   now() - m_start, secondsIn(used), static_cast<double>(used.ru_maxrss) * 1024,
                   m_text};
        return m_usage;
    }

    double m_start;
    pid_t m_pid = -1;
    int m_output = -1;
    std::string m_text;
    Usage m_usage;
};

/// The number that follows "name=" in a program's output.
inline std::optional<double> figure(const std::string &output, const std::string &name)
{
    const size_t at = output.find(name + '=');
    if (at == std::string::npos)
        return std::nullopt;
    return std::strtod(output.c_str() + at + name.size() + 1, nullptr);
}

} // namespace corvane::perf
