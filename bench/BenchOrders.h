#pragma once

#include "bench/OrderText.h"

#include <QString>

#include <vector>

namespace corvane::bench {

class Bench;

/// The orders by which people and tests make the bench misbehave, as text. Every order gets an
/// answer; a wrong one says what would be right and changes nothing.
namespace benchOrders {

QString run(Bench &bench, const QString &text);

/// The orders that change something, faults aside.
std::vector<OrderText> choices();

/// What the orders have made of the board and the meter, in a line.
QString state(Bench &bench);

} // namespace benchOrders

} // namespace corvane::bench
