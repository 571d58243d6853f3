// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/setup/GpibSearchFaults.h"

#include "core/setup/GpibSearch.h"
#include "devices/Literals.h"

#include <QStringList>

#include <algorithm>

namespace corvane {

namespace {

/// The description without what names the address or the board.
QString reasonOf(const GpibAddress &at, const QString &description)
{
    const QString prefix = at.toString() + u": "_s;
    QString reason =
        description.startsWith(prefix) ? description.sliced(prefix.size()) : description;
    return reason.replace(u"board "_s + GpibAddress::boardName(at.board), u"the board"_s);
}

} // namespace

void GpibSearchFaults::addSkipped(const GpibAddress &at, const QString &description)
{
    m_faults.push_back({at, false, reasonOf(at, description)});
}

void GpibSearchFaults::addLeft(const GpibAddress &at, int first, const QString &description)
{
    std::erase_if(m_faults, [&](const Fault &fault) {
        return fault.from.board == at.board && fault.from.primary >= first;
    });
    const GpibAddress from{.board = at.board, .primary = first, .secondary = {}};
    m_faults.push_back({from, true, reasonOf(at, description)});
}

QString GpibSearchFaults::Fault::place() const
{
    constexpr int last = GpibSearch::addressesPerBoard - 1;
    if (!left || from.primary == last)
        return from.toString();
    if (from.primary == 0)
        return GpibAddress::boardName(from.board);
    const GpibAddress end{.board = from.board, .primary = last, .secondary = {}};
    return u"%1 to %2"_s.arg(from.toString(), end.toString());
}

QString GpibSearchFaults::text() const
{
    std::vector<std::pair<QString, QStringList>> reasons;
    for (const Fault &fault : m_faults) {
        const auto same =
            std::ranges::find(reasons, fault.reason, [](const auto &one) { return one.first; });
        if (same == reasons.end())
            reasons.push_back({fault.reason, {fault.place()}});
        else
            same->second.append(fault.place());
    }
    QStringList lines;
    for (const auto &[reason, places] : reasons)
        lines.append(places.join(u", "_s) + u": "_s + reason);
    return lines.join(u'\n');
}

} // namespace corvane
