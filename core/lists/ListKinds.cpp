#include "core/lists/ListKinds.h"

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
    static const auto line = QStringLiteral("Line");
    static const auto operatorTitle = QStringLiteral("Operator");
    static const auto command = QStringLiteral("Command");
    static const auto value = QStringLiteral("Value");
    static const auto tolerance = QStringLiteral("Tolerance");
    static const auto response = QStringLiteral("Response");
    static const std::array<Layout, 3> all{
        Layout{{line, command, value, response},
               3,
               QStringLiteral("KMX Chamber Settings (*.kms)|*.kms")},
        Layout{{line, operatorTitle, command, value, response},
               4,
               QStringLiteral("KMX Profile (*.kmp)|*.kmp")},
        Layout{{line, operatorTitle, command, value, tolerance, response},
               5,
               QStringLiteral("Test List (*.tst)|*.tst")}};
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
