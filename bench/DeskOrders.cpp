// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/DeskOrders.h"

#include "bench/Desk.h"

#include <algorithm>

namespace corvane::bench {

using deskOrders::done;

namespace {

QString fault(Desk &desk, const QString &place, const QString &text)
{
    const auto &places = desk.places();
    const auto found = std::find_if(places.begin(), places.end(), [&](const Desk::Place &one) {
        return one.name.compare(place, Qt::CaseInsensitive) == 0;
    });
    if (found == places.end())
        return u"There is no order and no place \"%1\". Try \"help\" or \"list\"."_s.arg(place);
    const auto fault = Fault::parse(text);
    if (!fault)
        return u"There is no fault \"%1\". Try \"help\"."_s.arg(text);
    found->faults->order(*fault);
    if (fault->kind == Fault::Kind::Unplug) {
        found->plug->unplug();
        return done;
    }
    if (fault->kind == Fault::Kind::None)
        found->plug->discardOutput();
    return found->plug->replug() ? done : u"%1 cannot come back now."_s.arg(found->name);
}

QString list(Desk &desk)
{
    QStringList lines;
    for (const Desk::Place &place : desk.places()) {
        lines.append(u"%1 %2 %3 %4"_s.arg(place.name, -12)
                         .arg(place.what, -30)
                         .arg(place.where, -38)
                         .arg(place.state()));
    }
    lines.append(desk.state());
    return lines.join(u'\n');
}

QString clear(Desk &desk)
{
    QString answer = done;
    for (const Desk::Place &place : desk.places()) {
        const QString one = fault(desk, place.name, u"none"_s);
        if (one != done)
            answer = one;
    }
    return answer;
}

QString help(Desk &desk);

std::vector<DeskOrder> ordersOf(Desk &desk)
{
    std::vector<DeskOrder> orders{
        {{"list"_L1, ""_L1, "what is where, and its fault"_L1},
         [&desk](const QStringList &) { return list(desk); }},
        {{"help"_L1, ""_L1, "this list"_L1}, [&desk](const QStringList &) { return help(desk); }},
        {{"clear"_L1, ""_L1, "no fault anywhere, nothing unplugged"_L1},
         [&desk](const QStringList &) { return clear(desk); }},
    };
    const std::vector<DeskOrder> own = desk.ownOrders();
    orders.insert(orders.end(), own.begin(), own.end());
    return orders;
}

QString help(Desk &desk)
{
    const auto line = [](int width, const QString &order, QLatin1String about) {
        return u"  %1 %2\n"_s.arg(order, -width).arg(about);
    };
    const auto usage = [](const OrderText &text) {
        return u"%1 %2"_s.arg(text.word, text.arguments);
    };
    constexpr int width = 28;
    QString text = u"Orders:\n"_s;
    for (const DeskOrder &order : ordersOf(desk))
        text += line(width, usage(order.text), order.text.about);
    text +=
        line(width, u"PLACE FAULT"_s, R"(a fault at a place of the list, as "rs485 silent")"_L1);
    text += u"Faults:\n"_s;
    for (const OrderText &fault : Fault::choices())
        text += line(width, usage(fault), fault.about);
    return text.chopped(1);
}

} // namespace

QString deskOrders::run(Desk &desk, const QString &text)
{
    if (text != QString::fromLatin1(text.toLatin1()))
        return u"An order has 8-bit characters only; nothing was done."_s;
    const QString word = text.trimmed().section(u' ', 0, 0);
    const QString rest = text.trimmed().section(u' ', 1).trimmed();
    for (const DeskOrder &order : ordersOf(desk)) {
        if (word.compare(order.text.word, Qt::CaseInsensitive) != 0)
            continue;
        const QStringList arguments = rest.split(u' ', Qt::SkipEmptyParts);
        const QString named(order.text.arguments);
        const QString answer = arguments.size() == named.split(u' ', Qt::SkipEmptyParts).size()
                                   ? order.run(arguments)
                                   : QString();
        return answer.isEmpty() ? u"Use: %1 %2"_s.arg(order.text.word, named).trimmed() : answer;
    }
    return fault(desk, word, rest);
}

} // namespace corvane::bench
