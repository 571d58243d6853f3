#pragma once

#include <QString>

#include <optional>

namespace corvane {

class Channel;
class Main;

/// What a technician would type into a Channel's connection row. An empty entry is left as it is.
struct ChannelEntries
{
    QString port{};
    QString host{};
    QString address{};
    QString settings{};
};

/// Works the main window's Channels from code as a technician would: fills in entries, presses
/// Connect and Send, and waits for what comes of it.
class ChannelDriver
{
public:
    explicit ChannelDriver(Main &window)
        : m_window(window)
    {
    }

    /// Fills in the connection row of Channel `index`. Throws PlatformError for an entry that the
    /// Channel does not have or does not offer.
    void fillIn(int index, const ChannelEntries &entries);
    /// Presses Connect and waits until the Channel is open; false when it is not within the time.
    bool connect(int index, int patienceMs);
    /// Sends the command and waits for the whole reply; nothing when none came within the time.
    std::optional<QString> ask(int index, const QString &command, int patienceMs);

private:
    void fillInSerial(int index, const ChannelEntries &entries);
    void fillInGpib(const ChannelEntries &entries);
    void fillInTcp(int index, const ChannelEntries &entries);

    Main &m_window;
};

} // namespace corvane
