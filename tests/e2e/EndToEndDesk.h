// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ChannelDriver.h"
#include "app/UnattendedDialogs.h"
#include "app/window/WindowProgram.h"
#include "bench/Bench.h"
#include "tests/support/Testing.h"
#include "windows/main/ChannelTab.h"

namespace corvane {

/// Message boxes are recorded and answered; a file is saved at a path set beforehand.
class DeskDialogs : public UnattendedDialogs
{
public:
    using UnattendedDialogs::UnattendedDialogs;

    FileChoice saveFile(QObject *, const FileQuestion &) override
    {
        return {FileChoice::Outcome::Chosen, savePath};
    }
    QString savePath;
};

/// The real program on the bench: real transports, real clock.
struct EndToEndDesk
{
    static constexpr int patienceMs = 30000;

    explicit EndToEndDesk(const CommandLine &line = demo())
        : program(line, dialogs)
    {
        for (int index = 0; index < channelCount; ++index) {
            if (!open(index))
                ADD_FAILURE() << "not connected: Channel " << index;
        }
    }
    ~EndToEndDesk() { main.close(); }

    static CommandLine demo()
    {
        CommandLine line;
        line.demo = true;
        return line;
    }
    void order(const char *text)
    {
        const QString answer = program.workbench().bench()->order(QString::fromLatin1(text));
        EXPECT_EQ(answer, u"done") << text;
    }
    bool open(int index)
    {
        return channelDriver::open(channels.at(index), channels.waits(), patienceMs);
    }
    std::optional<QString> ask(int index, const QString &command, int ms = patienceMs)
    {
        return channelDriver::ask(channels.at(index), channels.waits(), command, ms);
    }
    bool waitFor(const Clock::Condition &done)
    {
        return main.waits().waitUntil(done, patienceMs) == WaitEnd::Done;
    }

    QString messages;
    QTextStream messageStream{&messages};
    DeskDialogs dialogs{messageStream};
    WindowProgram program;
    Main &main = program.window();
    ChannelSet &channels = main.parts().channels;
};

} // namespace corvane
