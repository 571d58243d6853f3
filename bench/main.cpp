#include "bench/Bench.h"
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

/// The port that an option asks for; false, with a message, when it is none.
bool takePort(const QCommandLineParser &parser, const QCommandLineOption &option, quint16 &port)
{
    const QString text = parser.value(option);
    bool ok = false;
    port = text.toUShort(&ok);
    if (!ok)
        std::fprintf(stderr, "corvane-bench: \"%s\" is no port for --%s.\n", qPrintable(text),
                     qPrintable(option.names().constFirst()));
    return ok;
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

    BenchOptions options;
    options.linkFolder = parser.value(links);
    bool areGood = takePort(parser, chamber, options.chamberPort) &&
                   takePort(parser, board, options.boardPort) &&
                   takePort(parser, gpib, options.gpibPort);
    if (parser.isSet(second))
        areGood = areGood && takePort(parser, second, options.secondGpibPort.emplace());
    if (!areGood)
        return 2;
    BenchConsole console(std::make_unique<Bench>(std::move(options)));
    return console.start() ? QCoreApplication::exec() : 2;
}
