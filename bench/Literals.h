#pragma once

#include <QString>

namespace corvane::bench {

/// u"text"_s is a QString, made when the program is built.
using namespace Qt::StringLiterals;

} // namespace corvane::bench
