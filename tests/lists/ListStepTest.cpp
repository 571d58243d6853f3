#include "lists/ListStep.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using Kind = ListStep::Kind;

struct Row
{
    int listKind;
    ListStep::Cells cells;
    Kind kind;
    QString command;
    QString stripped; // the command with the strip-operator option
};

QString text(const ListStep::Cells &cells)
{
    return cells.first + u'|' + cells.second + u'|' + cells.third;
}

} // namespace

TEST(ListStep, GetListAsksForTheFirstCell)
{
    EXPECT_EQ(ListStep::toGet(QStringLiteral("SP")),
              (ListStep{Kind::Send, QStringLiteral("? SP")}));
    EXPECT_EQ(ListStep::toGet(QStringLiteral("SP 50 ")).command, u"? SP 50 ");
    EXPECT_EQ(ListStep::toGet(QString()).kind, Kind::SyntaxError);
}

TEST(ListStep, SendListBuildsItsCommandsByTheKindOfList)
{
    const Row rows[] = {
        {0, {u"SP"_s, u"50"_s, {}}, Kind::Send, u"= SP 50"_s, u"SP 50"_s},
        {0, {u"= SP"_s, u"50"_s, {}}, Kind::Send, u"= SP 50"_s, u"SP 50"_s},
        {0, {u"A=B"_s, u"50 "_s, {}}, Kind::Send, u"A=B 50"_s, u"A=B 50"_s},
        {0, {u"SP"_s, {}, u"x"_s}, Kind::SyntaxError, {}, {}},
        {0, {{}, u"50"_s, {}}, Kind::SyntaxError, {}, {}},
        {1, {u"="_s, u"SP"_s, u"50 60"_s}, Kind::Send, u"= SP 50 60"_s, u"SP 50 60"_s},
        {1, {u"="_s, u"SP"_s, {}}, Kind::SyntaxError, {}, {}},
        {1, {u"="_s, {}, u"50"_s}, Kind::SyntaxError, {}, {}},
        {1, {{}, u"SP"_s, u"50"_s}, Kind::SyntaxError, {}, {}},
        {2, {u"="_s, u"SP"_s, u"25"_s}, Kind::Send, u"= SP 25"_s, u"SP 25"_s},
        {2, {u"?"_s, u"SP"_s, u"x"_s}, Kind::Send, u"? SP x"_s, u"SP x"_s},
        {2, {u"?"_s, u"SP"_s, {}}, Kind::Send, u"? SP"_s, u"SP"_s},
        {2, {u"="_s, {}, u"25"_s}, Kind::SyntaxError, {}, {}},
        {2, {u"!"_s, u"SP"_s, {}}, Kind::Check, {}, {}},
        {2, {u"!"_s, {}, u"25"_s}, Kind::SyntaxError, {}, {}},
        {2, {u"#"_s, {}, {}}, Kind::Nothing, {}, {}},
        {2, {u"wait"_s, {}, {}}, Kind::Nothing, {}, {}},
        {2, {u"wait"_s, u"SP"_s, {}}, Kind::Nothing, {}, {}},
        {2, {u"=SP"_s, {}, {}}, Kind::SyntaxError, {}, {}}, // a blank forgotten is no pause
        {2, {{}, u"SP"_s, u"25"_s}, Kind::SyntaxError, {}, {}},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(ListStep::toSend(row.listKind, row.cells, false),
                  (ListStep{row.kind, row.command}))
            << row.listKind << text(row.cells).toStdString();
        EXPECT_EQ(ListStep::toSend(row.listKind, row.cells, true),
                  (ListStep{row.kind, row.stripped}))
            << row.listKind << text(row.cells).toStdString();
    }
}

TEST(ListStep, AStripThatLeavesNothingSendsNothing)
{
    EXPECT_EQ(ListStep::toSend(2, {u"?"_s, u" "_s, {}}, true), (ListStep{Kind::Nothing, {}}));
}
