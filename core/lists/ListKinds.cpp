#include "core/lists/ListKinds.h"

#include "devices/Literals.h"

#include <algorithm>
#include <array>

namespace corvane::listKinds {

namespace {

const std::array<Layout, 3> &layouts()
{
    static const std::array<Layout, 3> all{
        Layout{{u"Line"_s, u"Command"_s, u"Value"_s, u"Response"_s},
               u"KMX Chamber Settings (*.kms)|*.kms"_s},
        Layout{{u"Line"_s, u"Operator"_s, u"Command"_s, u"Value"_s, u"Response"_s},
               u"KMX Profile (*.kmp)|*.kmp"_s},
        Layout{{u"Line"_s, u"Operator"_s, u"Command"_s, u"Value"_s, u"Tolerance"_s, u"Response"_s},
               u"Test List (*.tst)|*.tst"_s}};
    return all;
}

} // namespace

const Layout &layout(int kind)
{
    const bool known = kind >= chamberSettings && kind <= testList;
    return layouts()[static_cast<std::size_t>(known ? kind : chamberSettings)];
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
