// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListStep.h"

#include "tests/support/Testing.h"

using namespace corvane;

namespace {

using Kind = ListStep::Kind;

struct Row
{
    int listKind;
    const char *cells; // "|" between them
    Kind kind;
    const char *command;
};

void expectAll(std::initializer_list<Row> rows, bool stripOperator)
{
    for (const Row &row : rows) {
        const QStringList cells = QString::fromLatin1(row.cells).split(u'|');
        EXPECT_EQ(ListStep::toSend(row.listKind, {cells[0], cells[1], cells[2]}, stripOperator),
                  (ListStep{row.kind, QString::fromLatin1(row.command)}))
            << row.listKind << ": " << row.cells;
    }
}

} // namespace

TEST(ListStep, GetListAsksForTheFirstCell)
{
    EXPECT_EQ(ListStep::toGet(u"SP 50 "_s), (ListStep{Kind::Send, u"? SP 50 "_s}));
    EXPECT_EQ(ListStep::toGet(QString()).kind, Kind::SyntaxError);
}

TEST(ListStep, SendListBuildsItsCommandsByTheKindOfList)
{
    // clang-format off
    expectAll({
        {0, "SP|50|", Kind::Send, "= SP 50"}, {0, "= SP|50|", Kind::Send, "= SP 50"},
        {0, "A=B|50 |", Kind::Send, "A=B 50"}, {1, "=|SP|50 60", Kind::Send, "= SP 50 60"},
        {2, "=|SP|25", Kind::Send, "= SP 25"}, {2, "?|SP|x", Kind::Send, "? SP x"},
        {2, "?|SP|", Kind::Send, "? SP"}, {2, "!|SP|", Kind::Check, ""},
        {2, "#||", Kind::Nothing, ""}, {2, "wait||", Kind::Nothing, ""},
        {2, "wait|SP|", Kind::Nothing, ""}}, false);
    expectAll({
        {0, "SP||x", Kind::SyntaxError, ""}, {0, "|50|", Kind::SyntaxError, ""},
        {1, "=|SP|", Kind::SyntaxError, ""}, {1, "=||50", Kind::SyntaxError, ""},
        {1, "|SP|50", Kind::SyntaxError, ""}, {2, "=||25", Kind::SyntaxError, ""},
        {2, "!||25", Kind::SyntaxError, ""}, {2, "|SP|25", Kind::SyntaxError, ""},
        {2, "=SP||", Kind::SyntaxError, ""}}, false); // a blank forgotten is no pause
    expectAll({
        {0, "SP|50|", Kind::Send, "SP 50"}, {1, "=|SP|50", Kind::Send, "SP 50"},
        {2, "?|SP|x", Kind::Send, "SP x"}, {0, "A=B|50|", Kind::Send, "A=B 50"},
        {2, "?| |", Kind::Nothing, ""}}, true);
    // clang-format on
}
