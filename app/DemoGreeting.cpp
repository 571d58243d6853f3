#include "app/DemoGreeting.h"

#include "app/ChannelDriver.h"
#include "core/channels/ChannelTexts.h"
#include "core/channels/Module1.h"
#include "core/text/PrintableText.h"
#include "windows/main/Main.h"

#include <QTextStream>

namespace corvane {

namespace {

constexpr int patienceMs = 10'000;
constexpr int notAll = 2;

} // namespace

int greetTheBench(Main &window, QTextStream &out)
{
    ChannelDriver driver(window);
    bool allAnswered = true;
    for (int index = 0; index < channelCount; ++index) {
        const QString caption =
            channelTexts::channelCaptions.at(static_cast<size_t>(index)).leftJustified(10);
        const bool connected = driver.connect(index, patienceMs);
        if (window.waits().isClosed())
            return notAll; // stopped: nothing can be said of the rest
        if (!connected) {
            out << caption << "not connected" << Qt::endl;
            allAnswered = false;
            continue;
        }
        for (const QString &command : {channelTexts::idnCommand, channelTexts::systErrCommand}) {
            const auto reply = driver.ask(index, command, patienceMs);
            if (window.waits().isClosed())
                return notAll;
            allAnswered = allAnswered && reply;
            out << caption << command.leftJustified(12)
                << (reply ? printableText::field(*reply) : QStringLiteral("no answer")) << Qt::endl;
        }
    }
    return allAnswered ? 0 : notAll;
}

} // namespace corvane
