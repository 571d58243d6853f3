// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListStep.h"

#include "core/lists/Blanks.h"
#include "core/lists/ListKinds.h"
#include "devices/Literals.h"

namespace corvane {

namespace {

constexpr ListStep::Kind syntaxError = ListStep::Kind::SyntaxError;

QString settingsCommand(const ListStep::Cells &cells)
{
    const bool complete = cells.first.contains(u'=');
    return trimBlanks((complete ? QString() : u"= "_s) + cells.first + u' ' + cells.second);
}

QString joined(const ListStep::Cells &cells)
{
    return trimBlanks(cells.first + u' ' + cells.second + u' ' + cells.third);
}

ListStep::Kind testKind(const QString &operatorCell)
{
    if (operatorCell == u"=" || operatorCell == u"?")
        return ListStep::Kind::Send;
    return operatorCell == u"!" ? ListStep::Kind::Check : ListStep::Kind::Nothing;
}

QString withoutOperator(const QString &command)
{
    const bool has = command.startsWith(u'=') || command.startsWith(u'?');
    return has ? trimBlanks(QStringView(command).sliced(1)) : command;
}

} // namespace

ListStep ListStep::toGet(const QString &command)
{
    if (command.isEmpty())
        return {syntaxError, {}};
    return {Kind::Send, u"? "_s + command};
}

bool ListStep::needsSecondCell(int listKind, QStringView first)
{
    return listKind != listKinds::testList || first.isEmpty() ||
           QStringView(u"=?!").contains(first.front());
}

ListStep ListStep::toSend(int listKind, const Cells &cells, bool stripOperator)
{
    const bool profile = listKind == listKinds::chamberProfile;
    if (cells.first.isEmpty() || (profile && cells.third.isEmpty()) ||
        (cells.second.isEmpty() && needsSecondCell(listKind, cells.first)))
        return {syntaxError, {}};
    const Kind kind = listKind == listKinds::testList ? testKind(cells.first) : Kind::Send;
    if (kind != Kind::Send)
        return {kind, {}};
    QString command =
        listKind == listKinds::chamberSettings ? settingsCommand(cells) : joined(cells);
    if (stripOperator)
        command = withoutOperator(command);
    return {command.isEmpty() ? Kind::Nothing : Kind::Send, command};
}

} // namespace corvane
