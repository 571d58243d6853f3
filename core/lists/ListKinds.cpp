#include "core/lists/ListKinds.h"

#include "devices/Literals.h"

#include <algorithm>
#include <array>

namespace corvane::listKinds {

namespace {

struct Extension
{
    QStringView text;
    int kind;
};

constexpr Extension extensions[] = {
    {u"kms", chamberSettings}, {u"kmp", chamberProfile}, {u"tst", testList}};

const std::array<Layout, 3> &layouts()
{
    static const auto line = u"Line"_s;
    static const auto operatorTitle = u"Operator"_s;
    static const auto command = u"Command"_s;
    static const auto value = u"Value"_s;
    static const auto tolerance = u"Tolerance"_s;
    static const auto response = u"Response"_s;
    static const std::array<Layout, 3> all{
        Layout{{line, command, value, response}, 3, u"KMX Chamber Settings (*.kms)|*.kms"_s},
        Layout{{line, operatorTitle, command, value, response}, 4, u"KMX Profile (*.kmp)|*.kmp"_s},
        Layout{{line, operatorTitle, command, value, tolerance, response},
               5,
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
    const QString ending = path.right(3).toLower();
    const auto found = std::ranges::find(extensions, QStringView(ending), &Extension::text);
    return found == std::end(extensions) ? chamberSettings : found->kind;
}

QString fileName(const QString &path)
{
    return path.mid(std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
}

} // namespace corvane::listKinds
