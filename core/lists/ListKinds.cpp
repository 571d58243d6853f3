// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListKinds.h"

#include "devices/Literals.h"

#include <algorithm>
#include <vector>

namespace corvane::listKinds {

namespace {

/// By the numbers of the kinds.
const std::vector<Layout> &layouts()
{
    static const std::vector<Layout> all{
        {u"Line Command Value Response"_s.split(u' '), u"KMX Chamber Settings (*.kms)|*.kms"_s},
        {u"Line Operator Command Value Response"_s.split(u' '), u"KMX Profile (*.kmp)|*.kmp"_s},
        {u"Line Operator Command Value Tolerance Response"_s.split(u' '),
         u"Test List (*.tst)|*.tst"_s}};
    return all;
}

} // namespace

const Layout &layout(int kind)
{
    const auto at = static_cast<std::size_t>(kind);
    return layouts()[at < layouts().size() ? at : chamberSettings];
}

QString openFilter()
{
    QStringList filters;
    for (const Layout &each : layouts())
        filters.append(each.filter);
    return filters.join(u'|');
}

int ofPath(const QString &path)
{
    const auto found = std::ranges::find(layouts(), path.right(3).toLower(), &Layout::ending);
    return found == layouts().end() ? chamberSettings : static_cast<int>(found - layouts().begin());
}

QString fileName(const QString &path)
{
    return path.mid(std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
}

} // namespace corvane::listKinds
