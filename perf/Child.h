#pragma once

#include "perf/Harness.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>
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
/// Its standard error is ours. It is ended with the object.
class Child
{
public:
    enum class Input { Empty, Told };

    /// `Told`: its standard input stays open for tell().
    explicit Child(const std::vector<std::string> &command, Input input = Input::Empty)
        : m_start(now())
    {
        int in[2];
        int out[2];
        if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0)
            throw std::system_error(errno, std::generic_category(), "no pipe");
        m_pid = fork();
        if (m_pid == 0)
            become(command, in[0], out[1]);
        close(in[0]);
        close(out[1]);
        m_output = out[0];
        m_input = in[1];
        if (input == Input::Empty)
            closeInput();
    }
    ~Child()
    {
        end();
        closeInput();
        close(m_output);
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    /// Writes a line to its standard input.
    void tell(const std::string &line)
    {
        const std::string text = line + '\n';
        if (write(m_input, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            throw std::system_error(errno, std::generic_category(), "cannot tell a child");
    }
    /// What it has printed, as far as it was waited for.
    [[nodiscard]] const std::string &output() const { return m_text; }
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
    [[noreturn]] static void become(const std::vector<std::string> &command, int input, int output)
    {
        std::vector<char *> arguments;
        arguments.reserve(command.size() + 1);
        for (const std::string &argument : command)
            arguments.push_back(const_cast<char *>(argument.c_str()));
        arguments.push_back(nullptr);
        dup2(input, STDIN_FILENO);
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

    void closeInput()
    {
        if (m_input >= 0)
            close(std::exchange(m_input, -1));
    }

    double m_start;
    pid_t m_pid = -1;
    int m_input = -1;
    int m_output = -1;
    std::string m_text;
    Usage m_usage;
};

/// The path of a program that was built beside this one.
inline std::string programBeside(const std::string &name)
{
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / name).string();
}

/// The number that follows "name=" in a program's output.
inline std::optional<double> figure(const std::string &output, const std::string &name)
{
    const size_t at = output.find(name + '=');
    if (at == std::string::npos)
        return std::nullopt;
    return std::strtod(output.c_str() + at + name.size() + 1, nullptr);
}

} // namespace corvane::perf
