// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/GpibAdapterFactory.h"

#include "devices/IbBus.h"
#include "devices/LibraryAdapter.h"
#include "devices/PlatformError.h"
#include "devices/PlusPlusAdapter.h"
#include "devices/SerialGpibStream.h"
#include "devices/TcpGpibStream.h"
#include "devices/VisaBus.h"

namespace corvane {

namespace {

/// A board that nothing serves: every call says why and what to do.
class NoGpibAdapter : public GpibAdapter
{
public:
    explicit NoGpibAdapter(QString reason)
        : m_reason(std::move(reason))
    {
    }

    [[nodiscard]] QString description() const override { return u"no adapter"_s; }
    QString version(WaitGroup &) override { refuse(); }
    void open(const GpibAddress &, WaitGroup &) override { refuse(); }
    void clear(const GpibAddress &, WaitGroup &) override { refuse(); }
    void write(const GpibAddress &, const QByteArray &, int, WaitGroup &) override { refuse(); }
    QByteArray read(const GpibAddress &, int, WaitGroup &) override { refuse(); }

private:
    [[noreturn]] void refuse() const { throw PlatformError(m_reason); }

    QString m_reason;
};

std::shared_ptr<IbBus> ibBus(const QString &file, int board)
{
    return std::make_shared<IbBus>(std::make_shared<const IbLibrary>(file), board);
}

std::shared_ptr<VisaBus> visaBus(const QString &file, int board)
{
    return std::make_shared<VisaBus>(std::make_shared<const VisaLibrary>(file), board);
}

} // namespace

QString GpibAdapterFactory::chosenBy(int board, const QString &adapter) const
{
    return m_reader == Reader::Window ? u"\"Adapter...\" on the IEEE 488 tab"_s
                                      : u"--gpib %1=%2"_s.arg(board).arg(adapter);
}

std::unique_ptr<GpibAdapter> GpibAdapterFactory::make(const GpibAdapterChoice &choice,
                                                      int board) const
{
    using Kind = GpibAdapterChoice::Kind;
    const QString any = chosenBy(board, u"ADAPTER"_s);
    const QString another = u" (another adapter: %1)"_s.arg(any);
    try {
        switch (choice.kind) {
        case Kind::Auto:
            return makeFromLibraries(board);
        case Kind::Tcp:
            return std::make_unique<PlusPlusAdapter>(
                std::make_unique<TcpGpibStream>(choice.host, choice.port), another);
        case Kind::Serial:
            return std::make_unique<PlusPlusAdapter>(
                std::make_unique<SerialGpibStream>(choice.device), another);
        case Kind::Library:
            return std::make_unique<LibraryAdapter>(
                ibBus(m_libraries.ib, choice.libraryBoard.value_or(board)));
        case Kind::Visa:
            return std::make_unique<LibraryAdapter>(visaBus(m_libraries.visa, board));
        case Kind::None:
            break;
        }
    } catch (const PlatformError &fault) {
        return std::make_unique<NoGpibAdapter>(fault.description() + another);
    }
    return std::make_unique<NoGpibAdapter>(
        u"board GPIB%1 has no adapter; choose one (%2)"_s.arg(board).arg(any));
}

std::unique_ptr<GpibAdapter> GpibAdapterFactory::makeFromLibraries(int board) const
{
    QString why;
    try {
        auto bus = ibBus(m_libraries.ib, board);
        why = bus->missing();
        if (why.isEmpty())
            return std::make_unique<LibraryAdapter>(std::move(bus));
    } catch (const PlatformError &) {
        why = u"no GPIB library is installed"_s;
    }
    try {
        return std::make_unique<LibraryAdapter>(visaBus(m_libraries.visa, board));
    } catch (const PlatformError &) {
        return std::make_unique<NoGpibAdapter>(
            u"nothing serves board GPIB%1: %2, and no VISA library. Install the "
            "library of your board, or choose a \"++\" controller (%3)"_s.arg(board)
                .arg(why, chosenBy(board, u"tcp:HOST"_s)));
    }
}

QList<GpibAdapterFactory::Installed> GpibAdapterFactory::installed() const
{
    QList<Installed> found;
    try {
        found.append({u"ib*"_s, IbLibrary(m_libraries.ib).file});
    } catch (const PlatformError &) {
        // not installed
    }
    try {
        found.append({u"VISA"_s, VisaLibrary(m_libraries.visa).file});
    } catch (const PlatformError &) {
        // not installed
    }
    return found;
}

} // namespace corvane
