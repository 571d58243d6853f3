// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/GpibReply.h"

#include "devices/Literals.h"

namespace corvane::gpibReply {

QString whyIncomplete(QByteArrayView reply, End end)
{
    const bool hasLineEnd = reply.endsWith('\n');
    if (reply.isEmpty())
        return {};
    switch (end) {
    case End::Marked:
        break;
    case End::Unmarked:
        return hasLineEnd ? QString()
                          : u"the reply may be incomplete: neither a line feed nor "
                            "the controller marks its end"_s;
    case End::TimedOut:
        return hasLineEnd ? QString() : u"the reply is incomplete: its end did not come in time"_s;
    case End::Endless:
        return u"the reply is incomplete: the device was still sending when its time "
               "was over"_s;
    case End::TooLong:
        return u"the reply is incomplete: it was cut after %1 MB"_s.arg(longest / 1'000'000);
    }
    return {};
}

} // namespace corvane::gpibReply
