// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/OrderText.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace corvane::bench {

class Desk;

/// One order beside the faults.
struct DeskOrder
{
    OrderText text;
    /// Gets as many arguments as the text names. An empty answer: they were wrong.
    std::function<QString(const QStringList &arguments)> run;
};

/// The orders by which people and tests make a bench misbehave, as text. Every order gets an
/// answer; a wrong one says what would be right and changes nothing.
namespace deskOrders {

/// The answer to an order that was carried out.
inline const QString done = QStringLiteral("done");

QString run(Desk &desk, const QString &text);

} // namespace deskOrders

} // namespace corvane::bench
