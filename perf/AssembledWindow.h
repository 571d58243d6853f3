// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandLine.h"
#include "app/UnattendedDialogs.h"
#include "core/board/modSBC.h"
#include "core/channels/Module1.h"
#include "core/lists/CommandList.h"
#include "core/lists/TransferEngine.h"
#include "core/traffic/TrafficRecorder.h"
#include "devices/GpibAdapterFactory.h"
#include "devices/GpibControl.h"
#include "devices/QtTcpClient.h"
#include "devices/SystemClock.h"
#include "perf/MemoryPort.h"
#include "windows/about/ProgramLauncher.h"
#include "windows/about/SystemInfo.h"
#include "windows/main/Main.h"

#include <QDir>
#include <QTextStream>

namespace corvane::perf {

/// The program's main window where a benchmark has to get in between: serial ports in memory, the
/// benchmark's clock, message boxes answered at once; GPIB and TCP are real. The GPIB adapters wait
/// on a clock of their own, so the benchmark's clock sees the waits of the windows and no others.
class AssembledWindow
{
public:
    /// Of the command line the GPIB adapters are taken. `clock` must outlive the window.
    explicit AssembledWindow(Clock &clock, const CommandLine &line = {})
    {
        for (size_t board = 0; board < m_choices.size(); ++board) {
            if (!line.gpibAdapters.at(board).isEmpty())
                m_choices.at(board) = GpibAdapterChoice::parse(line.gpibAdapters.at(board));
        }
        m_channels = std::make_unique<ChannelSet>(
            ChannelDevices{rs485, rs232, m_gpib, m_tcpClient1, m_tcpClient2,
                           [] { return QList<SerialPortEntry>(); }},
            m_module, m_dialogs, clock);
        m_list = std::make_unique<CommandList>(m_module, m_dialogs);
        m_engine = std::make_unique<TransferEngine>(*m_channels, *m_list, m_dialogs);
        m_window = std::make_unique<Main>(MainParts{
            .clock = clock,
            .dialogs = m_dialogs,
            .channels = *m_channels,
            .list = *m_list,
            .engine = *m_engine,
            .traffic = m_traffic,
            .programFolder = QDir::tempPath(),
            .filesFolder = QDir::tempPath(),
            .gpibAdapters = m_choices,
            .gpibAdapterFactory = m_factory,
            .systemInfo = m_systemInfo,
            .remembered = m_remembered,
            .findLocalAddress = [](const auto &found) { found({.text = u"127.0.0.1"_s}); }});
        m_window->Form_Load();
        m_window->show();
    }

    [[nodiscard]] Main &window() { return *m_window; }
    /// What the message boxes said so far, a line each.
    [[nodiscard]] const QString &messages() const { return m_messages; }

    MemoryPort rs485;
    MemoryPort rs232;

private:
    QString m_messages;
    QTextStream m_messageStream{&m_messages};
    UnattendedDialogs m_dialogs{m_messageStream};
    Module1 m_module;
    TrafficRecorder m_traffic;
    modSBC m_remembered;
    SystemClock m_adapterClock;
    QtTcpClient m_tcpClient1;
    QtTcpClient m_tcpClient2;
    GpibAdapterFactory m_factory;
    GpibAdapterChoices m_choices;
    GpibControl m_gpib{m_adapterClock, [this](int board) {
                           return m_factory.make(m_choices.at(static_cast<size_t>(board)), board);
                       }};
    QtProgramLauncher m_launcher;
    SystemInfo m_systemInfo{systemRegistry(), m_launcher, m_dialogs};
    std::unique_ptr<ChannelSet> m_channels;
    std::unique_ptr<CommandList> m_list;
    std::unique_ptr<TransferEngine> m_engine;
    std::unique_ptr<Main> m_window;
};

} // namespace corvane::perf
