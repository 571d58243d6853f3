// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/Desk.h"
#include "bench/DeviceLink.h"
#include "bench/PlusPlusController.h"
#include "bench/ReplayDevice.h"

namespace corvane::bench {

/// A bench that answers as recorded devices did: each recorded Channel on a transport of its kind,
/// with an instrument at each recorded GPIB address, and each place with its faults.
class Replay : public Desk
{
public:
    using Pace = ReplayDevice::Pace;

    Replay(Recording recording, Pace pace, BenchOptions options = {});

    [[nodiscard]] QString tcpHint() const override;
    [[nodiscard]] std::vector<DeskOrder> ownOrders() override;
    /// The file, what could not be used of it, and how many requests it did not hold.
    [[nodiscard]] QString state() override;

private:
    /// A "++" controller for one recorded GPIB board.
    struct GpibBoard
    {
        PlusPlusController controller;
        TcpPort port;
    };

    Layout lay() override;
    void laySerial(Layout &layout, ReplayDevice &device, int number);
    void layTcp(Layout &layout, ReplayDevice &device, quint16 preferred);
    void layGpib(Layout &layout, ReplayDevice &device, const RecordedDevice::Gpib &gpib);
    /// The controller of a board, started with the board's first instrument; null when there is no
    /// port for it.
    GpibBoard *boardNumbered(Layout &layout, int number);
    DeviceLink &linkTo(ReplayDevice &device);
    void greetOnceOpen(PtyPort &port);
    void tellUnknown(const QString &where, const QByteArray &request);

    const QString m_path;
    const Pace m_pace;
    QStringList m_notes;
    int m_exchanges = 0;
    int m_unknown = 0;
    QString m_lastUnknown;

    // Devices first: what carries them goes before they do.
    std::vector<std::unique_ptr<ReplayDevice>> m_devices;
    std::vector<std::unique_ptr<DeviceLink>> m_links;
    std::vector<std::unique_ptr<GpibStation>> m_stations;
    /// By the number that the board was recorded with.
    std::map<int, std::unique_ptr<GpibBoard>> m_boards;
    std::vector<std::unique_ptr<PtyPort>> m_serialPorts;
    std::vector<std::unique_ptr<TcpPort>> m_tcpPorts;
};

} // namespace corvane::bench
