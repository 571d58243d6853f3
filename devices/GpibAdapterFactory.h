// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAdapter.h"
#include "devices/GpibAdapterChoice.h"

#include <QList>

#include <memory>

namespace corvane {

/// Makes the adapters that choices name, out of what is installed on this computer.
class GpibAdapterFactory
{
public:
    /// Files to load instead of the system's own ones; empty: the system's.
    struct Libraries
    {
        QString ib;
        QString visa;
    };

    struct Installed
    {
        QString kind; ///< "ib*", "VISA"
        QString file; ///< with its version where the name tells it
    };

    /// Where its faults are read, and so how they say that an adapter is chosen.
    enum class Reader { Window, CommandLine };

    explicit GpibAdapterFactory(Libraries libraries = {}, Reader reader = Reader::Window)
        : m_libraries(std::move(libraries))
        , m_reader(reader)
    {
    }

    /// The adapter of a board (0..3). Never null and never throws: where nothing serves the board,
    /// the adapter's calls say so and what to do. Loads libraries, which may take a moment.
    [[nodiscard]] std::unique_ptr<GpibAdapter> make(const GpibAdapterChoice &choice,
                                                    int board) const;

    /// The GPIB libraries found on this computer; loads them.
    [[nodiscard]] QList<Installed> installed() const;

private:
    [[nodiscard]] std::unique_ptr<GpibAdapter> makeFromLibraries(int board) const;
    /// How a board's adapter is chosen, in brackets: "(Adapter...)", "(--gpib 0=tcp:HOST)".
    [[nodiscard]] QString chosenBy(int board, const QString &adapter) const;

    Libraries m_libraries;
    Reader m_reader;
};

} // namespace corvane
