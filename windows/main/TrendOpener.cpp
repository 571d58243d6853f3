// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/TrendOpener.h"

#include "core/text/Dialogs.h"
#include "devices/PlatformError.h"
#include "windows/widgets/BusyPointer.h"
#include "windows/widgets/ClosableWindow.h"

namespace corvane {

namespace {

/// Whether it is missed now or was when the program was built.
const QString advice = u"\r\nIts curves are drawn by QCustomPlot for Qt 6: install "
                       "libqcustomplot2.1-qt6. A program that was built without it lacks "
                       "the window: install libqcustomplot-dev and build again."_s;

} // namespace

TrendOpener::TrendOpener(TrendParts parts, QString programFolder)
    : m_parts(std::move(parts))
    , m_programFolder(std::move(programFolder))
{
}

TrendOpener::~TrendOpener() = default;

void TrendOpener::open(QWidget &asker)
{
    try {
        if (!m_window) {
            const BusyPointer busy;
            const auto make = reinterpret_cast<TrendFunction>(
                programModule::load(trendFunction, m_programFolder, u"The Trend window"_s));
            m_window.reset(make(m_parts));
        }
        bringToFront(*m_window);
    } catch (const PlatformError &error) {
        m_parts.dialogs.showMessage(&asker, error.description() + advice);
    }
}

} // namespace corvane
