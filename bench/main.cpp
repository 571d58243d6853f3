#include "bench/BenchConsole.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

using namespace corvane::bench;

namespace {

const QString about =
    u"The simulated bench: chamber controllers, a board and a meter on pseudo terminals,\n"
    "TCP ports of this computer and a \"++\" GPIB controller.\n\n"
    "It says where everything is and how to start Corvane against it. Orders on its standard\n"
    "input make it misbehave: type \"help\" while it runs. Ctrl+C or \"quit\" ends it."_s;

/// The port that an option asks for; nothing, with a message, when it is none.
std::optional<quint16> portOf(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    const QString text = parser.value(option);
    bool ok = false;
    if (const quint16 port = text.toUShort(&ok); ok)
        return port;
    std::fprintf(stderr, "corvane-bench: \"%s\" is no port for --%s.\n", qPrintable(text),
                 qPrintable(option.names().constFirst()));
    return std::nullopt;
}

QCommandLineOption portOption(const char *name, const char *what, const char *preset)
{
    return {QLatin1String(name), QLatin1String(what), u"PORT"_s, QLatin1String(preset)};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"corvane-bench"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(about);
    parser.addHelpOption();
    const auto chamber = portOption("chamber-port", "TCP port of the chamber controller.", "5000");
    const auto board = portOption("board-port", "TCP port of the board.", "5001");
    const auto gpib = portOption("gpib-port", "TCP port of the GPIB controller.", "1234");
    const auto second =
        portOption("gpib2", "A second GPIB controller on PORT, an instrument at GPIB1::0.", "");
    const QCommandLineOption links(u"links"_s, u"Serial ports as links in FOLDER."_s, u"FOLDER"_s);
    parser.addOptions({chamber, board, gpib, second, links});
    parser.process(application);

    const auto chamberPort = portOf(parser, chamber);
    const auto boardPort = portOf(parser, board);
    const auto gpibPort = portOf(parser, gpib);
    const auto secondPort = parser.isSet(second) ? portOf(parser, second) : std::nullopt;
    if (!chamberPort || !boardPort || !gpibPort || (parser.isSet(second) && !secondPort))
        return 2;

    BenchOptions options;
    options.chamberPort = *chamberPort;
    options.boardPort = *boardPort;
    options.gpibPort = *gpibPort;
    options.secondGpibPort = secondPort;
    options.linkFolder = parser.value(links);
    BenchConsole console(std::move(options));
    return console.start() ? QCoreApplication::exec() : 2;
}
