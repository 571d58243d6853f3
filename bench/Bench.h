// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/Board.h"
#include "bench/ChamberController.h"
#include "bench/Desk.h"
#include "bench/DeviceLink.h"
#include "bench/Meter.h"
#include "bench/PlusPlusController.h"
#include "bench/Rs485Bus.h"

namespace corvane::bench {

/// The simulated devices: two chamber controllers, the board and the meter, on pseudo terminals,
/// loopback TCP and "++" GPIB controllers. Everything goes when it goes.
///
/// The chamber at RS-485 address 05, on RS-232, on TCP and at GPIB0::5 is one and the same; so is
/// the board on RS-232, on TCP and at GPIB0::9. The meter at GPIB0::16 measures the board.
class Bench : public Desk
{
public:
    static constexpr int chamberGpibAddress = 5;
    static constexpr int boardGpibAddress = 9;
    static constexpr int meterGpibAddress = 16;
    static constexpr int secondBoardGpibAddress = 0;

    explicit Bench(BenchOptions options = {});

    [[nodiscard]] QString rs485Device() const { return m_rs485.path(); }
    [[nodiscard]] QString rs232Device() const { return m_rs232.path(); }
    [[nodiscard]] quint16 chamberPort() const { return m_chamberTcp.port(); }
    [[nodiscard]] quint16 boardPort() const { return m_boardTcp.port(); }

    [[nodiscard]] Board &board() { return m_board; }
    [[nodiscard]] Meter &meter() { return m_meter; }

    [[nodiscard]] QString tcpHint() const override;
    [[nodiscard]] std::vector<DeskOrder> ownOrders() override;
    [[nodiscard]] QString state() override;

private:
    Layout lay() override;
    void wire();
    void startTransports();
    [[nodiscard]] std::vector<Place> placesNow();

    // Devices first: what carries them goes before they do.
    ChamberController m_chamber;
    ChamberController m_secondChamber;
    ChamberController m_thirdChamber;
    Board m_board;
    Meter m_meter;
    Rs485Bus m_rs485Bus;

    DeviceLink m_rs485Link;
    DeviceLink m_rs232Link;
    DeviceLink m_boardSerialLink;
    DeviceLink m_chamberTcpLink;
    DeviceLink m_boardTcpLink;
    GpibStation m_chamberStation;
    GpibStation m_boardStation;
    GpibStation m_meterStation;
    GpibStation m_secondStation;
    PlusPlusController m_gpib;
    PlusPlusController m_gpibSerial;
    PlusPlusController m_secondGpib;

    PtyPort m_rs485;
    PtyPort m_rs232;
    PtyPort m_boardSerial;
    PtyPort m_gpibPty;
    TcpPort m_chamberTcp;
    TcpPort m_boardTcp;
    TcpPort m_gpibTcp;
    TcpPort m_secondGpibTcp;
};

} // namespace corvane::bench
