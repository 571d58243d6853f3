// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/DeskOrders.h"

namespace corvane::bench {

class Bench;

/// The orders for the board and the meter.
namespace benchOrders {

std::vector<DeskOrder> of(Bench &bench);

/// What the orders have made of the board and the meter, in a line.
QString state(Bench &bench);

} // namespace benchOrders

} // namespace corvane::bench
