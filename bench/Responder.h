// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <vector>

namespace corvane::bench {

/// One piece of a reply.
struct TimedPiece
{
    /// How it stands to what still waits to be sent on its stream.
    enum class Turn {
        Next,    ///< behind all of it
        Reply,   ///< begins what is timed from its request: replies that wait go out now, before it
        Unasked, ///< begins what has a time of its own: it holds nothing up
        Rest,    ///< goes on with what was begun before it
    };

    /// Milliseconds after the piece before it; of the first, after the command.
    int afterMs = 0;
    QByteArray bytes;
    /// The reply's end: where a GPIB device marks its last byte.
    bool end = false;
    Turn turn = Turn::Next;
};
using Pieces = std::vector<TimedPiece>;

/// What stands behind a transport: it is given command lines and says which bytes go out in return,
/// and when. It knows neither the transport nor the faults that spoil the reply.
class Responder
{
public:
    virtual ~Responder() = default;

    /// The reply to one command line, which comes without its line end. Empty: it is silent.
    virtual Pieces respond(const QByteArray &line) = 0;
    /// What goes out unasked when somebody has connected.
    virtual Pieces greet() { return {}; }

protected:
    Responder() = default;
    Q_DISABLE_COPY_MOVE(Responder)
};

} // namespace corvane::bench
