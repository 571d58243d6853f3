#pragma once

namespace corvane {

class GpibControl;
class WaitGroup;

/// Reads one measurement from the reference meter at the given GPIB primary address of board
/// GPIB0, which takes two seconds and the meter's own time. The control is addressed to the meter
/// meanwhile and gets its own address back on every way out.
///
/// 0 when the meter's reply holds no number or the waits were closed; infinite when it is too large
/// for single precision. Throws PlatformError when the meter cannot be addressed or written to.
float ReadMeterValue(GpibControl &control, WaitGroup &waits, int address);

} // namespace corvane
