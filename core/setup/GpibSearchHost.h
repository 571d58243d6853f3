#pragma once

#include <QString>

namespace corvane {

class GpibControl;

/// What the GPIB search needs of the main window. While a search runs the host starts no other use
/// of the GPIB control: it skips the GPIB Channel's ticks and refuses its sending.
class GpibSearchHost
{
public:
    /// What already uses the GPIB control, or would use it between two probes.
    enum class OtherUse { None, ListRun, Loop, PendingRead, BoardExchange };

    virtual ~GpibSearchHost() = default;

    /// The one GPIB control of the program.
    virtual GpibControl &QBXControl1() = 0;
    [[nodiscard]] virtual OtherUse otherGpibUse() const = 0;
    /// Stops the main window's tmrSearchGPIB.
    virtual void stopSearchTimer() = 0;
    /// Puts a text into the GPIB Channel's response box.
    virtual void setGpibResponse(const QString &text) = 0;
    /// Sets cboIEEEAddress, then cboIEEEPort, as in "5" and "GPIB0"; the connect string follows.
    virtual void setGpibAddress(const QString &board, const QString &address) = 0;

protected:
    GpibSearchHost() = default;
    Q_DISABLE_COPY_MOVE(GpibSearchHost)
};

} // namespace corvane
