#include "devices/GpibReply.h"

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
                          : QStringLiteral("the reply may be incomplete: neither a line feed nor "
                                           "the controller marks its end");
    case End::TimedOut:
        return hasLineEnd ? QString()
                          : QStringLiteral("the reply is incomplete: its end did not come in time");
    case End::Endless:
        return QStringLiteral("the reply is incomplete: the device was still sending when its time "
                              "was over");
    case End::TooLong:
        return QStringLiteral("the reply is incomplete: it was cut after %1 MB")
            .arg(longest / 1'000'000);
    }
    return {};
}

} // namespace corvane::gpibReply
