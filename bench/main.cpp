// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Bench.h"
#include "bench/BenchConsole.h"
#include "bench/Replay.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

using namespace corvane::bench;

namespace {

const QString about =
    u"The simulated bench: chamber controllers, a board and a meter on pseudo terminals,\n"
    "TCP ports of this computer and a \"++\" GPIB controller; or, with --replay, devices that\n"
    "answer as those did whose traffic was recorded.\n\n"
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

/// The bench that the options ask for; null, with a message, when that cannot be.
std::unique_ptr<Desk> makeDesk(const QCommandLineParser &parser, const QCommandLineOption &replay,
                               const QCommandLineOption &fast, BenchOptions options)
{
    const QString path = parser.value(replay);
    if (!parser.isSet(replay)) {
        if (!parser.isSet(fast))
            return std::make_unique<Bench>(std::move(options));
        std::fprintf(stderr, "corvane-bench: --fast: needs --replay FILE\n");
        return nullptr;
    }
    Recording recording = Recording::read(path);
    if (!recording.fault.isEmpty()) {
        std::fprintf(stderr, "corvane-bench: --replay %s: %s\n", qPrintable(path),
                     qPrintable(recording.fault));
        return nullptr;
    }
    return std::make_unique<Replay>(
        std::move(recording), parser.isSet(fast) ? Replay::Pace::Fast : Replay::Pace::Recorded,
        std::move(options));
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
    const auto second = portOption("gpib2",
                                   "A second GPIB controller on PORT, with an instrument at "
                                   "GPIB1::0 or a second recorded board.",
                                   "");
    const QCommandLineOption links(u"links"_s, u"Serial ports as links in FOLDER."_s, u"FOLDER"_s);
    const QCommandLineOption replay(
        u"replay"_s,
        u"Answer as the devices did whose traffic is recorded in FILE; TCP/IP-1 is on the port of "
        "the chamber controller, TCP/IP-2 on that of the board."_s,
        u"FILE"_s);
    const QCommandLineOption fast(u"fast"_s, u"Replay without the recorded delays."_s);
    parser.addOptions({chamber, board, gpib, second, links, replay, fast});
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
    auto desk = makeDesk(parser, replay, fast, std::move(options));
    if (!desk)
        return 2;
    BenchConsole console(std::move(desk));
    return console.start() ? QCoreApplication::exec() : 2;
}
