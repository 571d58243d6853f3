// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/trend/TrendModule.h"

#include <memory>

namespace corvane {

/// Opens the Trend window: loads its module at the first time and keeps the window.
class TrendOpener
{
public:
    /// The module is that of the program in `programFolder`.
    TrendOpener(TrendParts parts, QString programFolder);
    ~TrendOpener();

    /// A module that cannot be loaded is said in a message box of `asker`; the program lacks
    /// nothing else.
    void open(QWidget &asker);

private:
    const TrendParts m_parts;
    const QString m_programFolder;
    std::unique_ptr<QWidget> m_window;
};

} // namespace corvane
