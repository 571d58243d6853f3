#pragma once

#include "bench/BenchOrders.h"
#include "bench/Board.h"
#include "bench/ChamberController.h"
#include "bench/DeviceLink.h"
#include "bench/GpibStation.h"
#include "bench/Literals.h"
#include "bench/Meter.h"
#include "bench/PlusPlusController.h"
#include "bench/PtyPort.h"
#include "bench/Rs485Bus.h"
#include "bench/TcpPort.h"

#include <QTemporaryDir>

namespace corvane::bench {

/// What a bench is started with. A port of 0 asks for a free one.
struct BenchOptions
{
    quint16 chamberPort = 5000;
    quint16 boardPort = 5001;
    quint16 gpibPort = 1234;
    /// The port of a second "++" controller; none without it.
    std::optional<quint16> secondGpibPort;
    /// The folder of the serial ports' links, which must exist; empty for a temporary one.
    QString linkFolder;
    TimeSource time = steadyTime();
};

/// The whole desk: two chamber controllers, the board and the meter, on pseudo terminals, loopback
/// TCP and "++" GPIB controllers, each place with its faults. Everything goes when it goes.
///
/// The chamber at RS-485 address 05, on RS-232, on TCP and at GPIB0::5 is one and the same; so is
/// the board on RS-232, on TCP and at GPIB0::9. The meter at GPIB0::16 measures the board.
class Bench : public QObject
{
public:
    /// One place where a fault can be ordered.
    struct Place
    {
        /// As orders name it: "rs485", "gpib:5".
        QString name;
        QString what;
        /// Where the program finds it: a device path, "127.0.0.1:5000", "GPIB0::5".
        QString where;
        FaultLine *faults;
        Plug *plug;

        /// Its fault and what its plug says, as in "slow 500, 1 connected".
        [[nodiscard]] QString state() const;
    };

    static constexpr int chamberGpibAddress = 5;
    static constexpr int boardGpibAddress = 9;
    static constexpr int meterGpibAddress = 16;
    static constexpr int secondBoardGpibAddress = 0;

    explicit Bench(BenchOptions options = {});

    /// Starts everything. False when a part could not; errorString() says which, and the rest runs.
    bool start();
    [[nodiscard]] QString errorString() const { return m_errors.join(u'\n'); }

    /// The paths of the serial ports.
    [[nodiscard]] QString rs485Device() const { return m_rs485.path(); }
    [[nodiscard]] QString rs232Device() const { return m_rs232.path(); }
    [[nodiscard]] QString boardDevice() const { return m_boardSerial.path(); }
    /// The host and the ports on it; the second controller's is 0 when there is none.
    [[nodiscard]] static QString host() { return u"127.0.0.1"_s; }
    [[nodiscard]] quint16 chamberPort() const { return m_chamberTcp.port(); }
    [[nodiscard]] quint16 boardPort() const { return m_boardTcp.port(); }
    [[nodiscard]] quint16 gpibPort() const { return m_gpibTcp.port(); }
    [[nodiscard]] quint16 secondGpibPort() const { return m_secondGpibTcp.port(); }

    [[nodiscard]] ChamberController &chamber() { return m_chamber; }
    [[nodiscard]] Board &board() { return m_board; }
    [[nodiscard]] Meter &meter() { return m_meter; }

    [[nodiscard]] const std::vector<Place> &places() const { return m_places; }
    /// The arguments that make the program use this bench's serial ports and controllers.
    [[nodiscard]] QStringList programArguments() const;

    /// Does what one order says ("rs485 silent", "connector on", "help") and returns the answer.
    QString order(const QString &text) { return benchOrders::run(*this, text); }
    /// What the orders have made of the board and the meter, in a line.
    [[nodiscard]] QString state() { return benchOrders::state(*this); }

private:
    [[nodiscard]] QString link(const QString &name) const;
    void wire();
    void startTcp(TcpPort &port, quint16 preferred);
    void listPlaces();

    BenchOptions m_options;
    QStringList m_errors;
    QTemporaryDir m_temporaryLinks;

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
    std::vector<Place> m_places;
};

} // namespace corvane::bench
