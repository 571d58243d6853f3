// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/HelpChapters.h"

#include "core/channels/ChannelTraits.h"
#include "windows/lists/CommandListArea.h"

#include <QHash>
#include <QTabWidget>

namespace corvane {

namespace {

/// By the windows' names.
const QHash<QString, QString> chapters{
    {u"frmList"_s, u"Command lists"_s},
    {u"frmPortConfig"_s, u"Serial ports"_s},
    {u"frmGPIB"_s, u"Finding a device on IEEE 488"_s},
    {u"frmGpibAdapters"_s, u"Which GPIB adapters work"_s},
    {u"GpibAboutBox"_s, u"Which GPIB adapters work"_s},
    {u"frmSBCPrint"_s, u"The calibration report"_s},
    {u"frmAbout"_s, u"The window and its five Channels"_s},
    {u"messageBox"_s, u"What Corvane may say, and what to do"_s},
    {u"TrafficWindow"_s, u"Traffic: what went over the wire"_s},
    {u"TrendWindow"_s, u"Trend: replies over time"_s},
    {u"BenchWindow"_s, u"The bench: trying things without a device"_s},
};

QString chapterOfChannel(int channel)
{
    if (channel == channels::ieee488)
        return u"Connecting IEEE 488"_s;
    return channel < channels::ieee488 ? u"Connecting RS-485 and RS-232"_s : u"Connecting TCP/IP"_s;
}

} // namespace

QString helpChapterOf(const QWidget &window)
{
    const auto *pages = window.findChild<QTabWidget *>();
    if (window.objectName() == u"frmSBC" && pages != nullptr)
        return pages->tabText(pages->currentIndex()); // a section each
    if (window.objectName() != u"Main" || pages == nullptr)
        return chapters.value(window.objectName());
    const auto *list = window.findChild<CommandListArea *>();
    return list && list->isAncestorOf(window.focusWidget())
               ? u"Command lists"_s
               : chapterOfChannel(pages->currentIndex());
}

} // namespace corvane
