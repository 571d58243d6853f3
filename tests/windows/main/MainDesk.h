// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/modSBC.h"
#include "core/lists/CommandList.h"
#include "core/lists/TransferEngine.h"
#include "core/traffic/TrafficRecorder.h"
#include "devices/GpibAdapterFactory.h"
#include "tests/support/FakeChannels.h"
#include "windows/about/ProgramLauncher.h"
#include "windows/about/SystemInfo.h"
#include "windows/main/Main.h"

namespace corvane {

/// The main window over fake devices.
struct MainDesk : FakeChannels
{
    QTemporaryDir folder;
    QSettings settings{folder.filePath(u"settings.ini"_s), QSettings::IniFormat};
    GpibAdapterChoices adapters;
    GpibAdapterFactory adapterFactory;
    QtProgramLauncher launcher;
    modSBC remembered;
    SystemInfo systemInfo{systemRegistry(), launcher, dialogs};
    CommandList list{module, dialogs};
    TransferEngine engine{channels, list, dialogs};
    TrafficRecorder traffic;
    Main main{{.clock = clock,
               .dialogs = dialogs,
               .channels = channels,
               .list = list,
               .engine = engine,
               .traffic = traffic,
               .settings = &settings,
               .programFolder = folder.path(),
               .filesFolder = folder.path(),
               .gpibAdapters = adapters,
               .gpibAdapterFactory = adapterFactory,
               .systemInfo = systemInfo,
               .remembered = remembered,
               .findLocalAddress = [this](const auto &found) { addressWanted = found; }}};
    std::function<void(const LocalAddress &)> addressWanted;

    MainDesk() { main.Form_Load(); }
    void connectAll()
    {
        for (int index = 0; index < channelCount; ++index)
            main.cmdConnect_Click(index);
    }
};

} // namespace corvane
