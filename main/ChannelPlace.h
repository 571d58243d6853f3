#pragma once

#include <QString>

namespace corvane {

class Main;

/// Where a Channel's device is, as its entries stand: "/dev/ttyUSB0 (port 1), 9600,N,8,1",
/// "GPIB0::5 (auto)", "10.0.0.5:5000".
QString channelPlace(const Main &window, int index);

} // namespace corvane
