// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelSession.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace corvane {

/// What the program was asked to do, as its arguments say.
struct CommandLine
{
    enum class Task { Window, Run, ListPorts, Version, Help };

    Task task = Task::Window;
    /// The list to load, or to run; may be empty.
    QString list;
    /// With the simulated bench behind every Channel.
    bool demo = false;
    /// The recording whose devices the bench answers as; empty for the simulated ones.
    QString replayFile;
    /// Without the recorded delays.
    bool replaysFast = false;
    /// Serial port numbers pinned to devices.
    QMap<int, QString> serialDevices;
    /// The adapter of each GPIB board, as given.
    std::array<QString, 4> gpibAdapters;

    /// The folder of the window's log, where its file dialogs start; empty: by itself.
    QString folder;
    /// Where the traffic is written as it passes, "-" for standard output; empty: nowhere.
    QString recordFile;

    /// What is entered for each Channel that is set up, by its index.
    QMap<int, ChannelEntries> setups;
    /// The Channel of the run, or the one that the window shows first; -1: none was named.
    int channel = -1;
    std::optional<int> loopMs; ///< 10..3,600,000, of that Channel
    /// The window connects the Channels that are set up.
    bool connects = false;

    /// For an unattended run:
    std::optional<int> timeoutMs; ///< 1..59999
    bool stripOperator = false;
    bool get = false;
    QString saveFile;
    int patienceSeconds = 30; ///< 1..86,400
    QString csvFile;
    QString junitFile;

    /// Reads the arguments, the program's name first. Throws PlatformError that names the wrong
    /// argument.
    static CommandLine parse(const QStringList &arguments);
    static QString helpText();
};

} // namespace corvane
