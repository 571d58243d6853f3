#include "main/DemoGreeting.h"

#include "common/Module1.h"
#include "main/ChannelDriver.h"
#include "main/ChannelTexts.h"

#include <QTextStream>

namespace corvane {

namespace {

constexpr int patienceMs = 10'000;

} // namespace

int greetTheBench(Main &window, QTextStream &out)
{
    ChannelDriver driver(window);
    bool allAnswered = true;
    for (int index = 0; index < channelCount; ++index) {
        const QString caption =
            channelTexts::channelCaptions.at(static_cast<size_t>(index)).leftJustified(10);
        if (!driver.connect(index, patienceMs)) {
            out << caption << "not connected" << Qt::endl;
            allAnswered = false;
            continue;
        }
        for (const QString &command : {channelTexts::idnCommand, channelTexts::systErrCommand}) {
            const auto reply = driver.ask(index, command, patienceMs);
            allAnswered = allAnswered && reply;
            out << caption << command.leftJustified(12)
                << (reply ? *reply : QStringLiteral("no answer")) << Qt::endl;
        }
    }
    return allAnswered ? 0 : 2;
}

} // namespace corvane
