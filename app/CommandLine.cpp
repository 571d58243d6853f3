// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandLine.h"

#include "app/ChannelSetup.h"
#include "core/channels/ChannelSession.h"
#include "devices/GpibAdapterChoice.h"
#include "devices/PlatformError.h"
#include "devices/WholeNumber.h"

#include <QCommandLineParser>

namespace corvane {

namespace {

[[noreturn]] void refuse(const QString &option, const QString &value, const QString &expected)
{
    const QString given = value.isEmpty() ? option : option + u' ' + value;
    throw PlatformError(u"--%1: %2"_s.arg(given, expected));
}

/// The options and what each of them takes; a value's name is empty for a switch.
struct Option
{
    const char *name;
    const char *value;
    const char *help;
    bool isOfRun = false;                  ///< means nothing without --run
    QString CommandLine::*field = nullptr; ///< takes the value as it is
};

constexpr Option options[] = {
    {"demo", "",
     "With the simulated bench behind every Channel; without a display, ask each of them and run "
     "LIST on TCP/IP-1."},
    {"replay", "FILE", "With --demo: answer as the devices did whose traffic is recorded in FILE."},
    {"fast", "", "With --replay: without the recorded delays."},
    {"com", "N=DEVICE", "Serial port number N is DEVICE (repeatable)."},
    {"gpib", "N=ADAPTER",
     "GPIB board N: auto | none | tcp:HOST[:PORT] | serial:DEVICE | library[:BOARD] | visa "
     "(repeatable)."},
    {"record", "FILE", "Write the traffic to FILE as JSON lines (\"-\": standard output).", false,
     &CommandLine::recordFile},
    {"folder", "DIR", "Of the window: the folder that Log.txt is in and the file dialogs start in.",
     false, &CommandLine::folder},
    {"tcp1", "HOST[:PORT]", "Set TCP/IP-1 up; an IPv6 address before a port stands in brackets."},
    {"tcp2", "HOST[:PORT]", "Set TCP/IP-2 up."},
    {"rs485", "DEVICE[,SETTINGS][@ADDRESS]",
     "Set RS-485 up, as in 1@05 or /dev/ttyUSB0,9600,N,8,1@05."},
    {"rs232", "DEVICE[,SETTINGS]", "Set RS-232 up."},
    {"gpib-address", "ADDRESS", "Set IEEE 488 up, as in 5, 0::5 or GPIB0::5."},
    {"connect", "", "Connect the Channels that are set up when the window opens."},
    {"run", "LIST", "Run LIST without a display.", false, &CommandLine::list},
    {"channel", "NAME",
     "Channel of the run, or that the window shows: rs485 | rs232 | gpib | tcp1 | tcp2."},
    {"port", "P", "With --channel: serial port number, or TCP port."},
    {"host", "H", "With --channel: remote host of a TCP Channel."},
    {"address", "A", "With --channel: RS-485 address, or GPIB address (5, or GPIB0::5)."},
    {"settings", "S", "With --channel: serial settings, as in 9600,N,8,1."},
    {"loop", "MS", "With --channel: loop time, 10 to 3600000 ms."},
    {"timeout", "MS", "GPIB time-out, 1 to 59999 ms.", true},
    {"strip-operator", "", R"(Send "=" and "?" commands without their operator.)", true},
    {"get", "", "Get list: fill the list with the device's values.", true},
    {"save", "FILE", "Write the list back to FILE after --get (\"-\": standard output).", true,
     &CommandLine::saveFile},
    {"patience", "SECONDS", "Give up when a reply stays out so long (default 30).", true},
    {"csv", "FILE", "Write the grid as run as comma-separated values (\"-\": as above).", true,
     &CommandLine::csvFile},
    {"junit", "FILE", "Write the checks as run as a JUnit report (\"-\": as above).", true,
     &CommandLine::junitFile},
    {"list-ports", "",
     "Print number, device, maker, description and serial number of each serial port."},
    {"version", "", "Print the version."},
    {"help", "", "Print this text."},
};

/// These may be given again, each time for another number.
bool isRepeatable(const QString &option)
{
    return option == u"com" || option == u"gpib";
}

/// The name, and the one letter of those that every program has.
QStringList namesOf(const Option &option)
{
    const QString name = QLatin1String(option.name);
    const bool hasLetter = name == u"help" || name == u"version";
    return hasLetter ? QStringList{name.first(1), name} : QStringList{name};
}

void addOptions(QCommandLineParser &parser)
{
    for (const Option &option : options)
        parser.addOption(QCommandLineOption(namesOf(option), QLatin1String(option.help),
                                            QLatin1String(option.value)));
    parser.addPositionalArgument(u"LIST"_s, u"A list file to load into the window."_s, u"[LIST]"_s);
}

int numberOf(const QCommandLineParser &parser, const QString &option, int first, int last)
{
    const QString text = parser.value(option);
    if (const auto number = wholeNumber(text, first, last))
        return *number;
    refuse(option, text, u"a whole number from %1 to %2 is expected"_s.arg(first).arg(last));
}

/// Splits "N=TEXT".
std::pair<int, QString> numbered(const QString &option, const QString &value, int first, int last)
{
    const qsizetype equals = value.indexOf(u'=');
    const auto number = wholeNumber(value.left(equals), first, last);
    if (equals < 0 || !number || equals + 1 == value.size())
        refuse(option, value, u"N=... with N from %1 to %2 is expected"_s.arg(first).arg(last));
    return {*number, value.mid(equals + 1)};
}

/// What --tcp1 and its like say.
void readSetups(const QCommandLineParser &parser, CommandLine &line)
{
    for (int channel = 0; channel < channelCount; ++channel) {
        const QString option = channelSetup::optionOf(channel);
        if (!parser.isSet(option))
            continue;
        try {
            line.setups[channel] = channelSetup::parse(channel, parser.value(option));
        } catch (const PlatformError &error) {
            refuse(option, parser.value(option), error.description());
        }
    }
}

int channelNamed(const QString &name)
{
    const auto found = std::ranges::find(channelTraits(), name.toLower(), &ChannelTraits::option);
    if (found == channelTraits().end())
        refuse(u"channel"_s, name, u"one of rs485, rs232, gpib, tcp1, tcp2 is expected"_s);
    return static_cast<int>(found - channelTraits().begin());
}

/// --channel, and what is said of that Channel. Without it the only one that is set up is meant.
void readChannel(const QCommandLineParser &parser, CommandLine &line)
{
    const bool isNamed = parser.isSet(u"channel"_s);
    if (isNamed)
        line.channel = channelNamed(parser.value(u"channel"_s));
    else if (line.setups.size() == 1)
        line.channel = line.setups.firstKey();
    QString host = parser.value(u"host"_s);
    if (host.startsWith(u'[') && host.endsWith(u']')) // as an address with colons may be written
        host = host.sliced(1).chopped(1);
    const ChannelEntries entries{parser.value(u"port"_s), host, parser.value(u"address"_s),
                                 parser.value(u"settings"_s)};
    for (const QString &option : {u"port"_s, u"host"_s, u"address"_s, u"settings"_s, u"loop"_s}) {
        if (!parser.isSet(option))
            continue;
        if (!isNamed && (option != u"loop" || line.channel < 0))
            refuse(option, parser.value(option), u"needs --channel NAME"_s);
        if (option == u"loop")
            line.loopMs =
                numberOf(parser, option, ChannelSession::minPeriodMs, ChannelSession::maxPeriodMs);
        else if (parser.isSet(channelSetup::optionOf(line.channel)))
            refuse(option, parser.value(option),
                   u"--%1 says it already"_s.arg(channelSetup::optionOf(line.channel)));
        else
            line.setups[line.channel] = entries;
    }
}

void readWindow(const QCommandLineParser &parser, CommandLine &line)
{
    readChannel(parser, line);
    line.connects = parser.isSet(u"connect"_s);
    if (!line.connects)
        return;
    if (line.setups.isEmpty() && line.channel < 0)
        refuse(u"connect"_s, {}, u"needs a Channel that is set up, as by --tcp1 HOST"_s);
    if (line.channel >= 0)
        line.setups[line.channel]; // its entries as they are
}

void readRun(const QCommandLineParser &parser, CommandLine &line)
{
    readChannel(parser, line);
    if (line.channel < 0)
        refuse(u"channel"_s, {}, u"one of rs485, rs232, gpib, tcp1, tcp2 is expected"_s);
    for (auto setup = line.setups.begin(); setup != line.setups.end(); ++setup) {
        if (setup.key() != line.channel)
            refuse(channelSetup::optionOf(setup.key()), {}, u"the run is on another Channel"_s);
    }
    if (parser.isSet(u"connect"_s))
        refuse(u"connect"_s, {}, u"is for the window; a run connects by itself"_s);
    if (!line.folder.isEmpty())
        refuse(u"folder"_s, line.folder, u"is for the window; a run writes no log"_s);
    line.task = CommandLine::Task::Run;
    if (parser.isSet(u"timeout"_s))
        line.timeoutMs = numberOf(parser, u"timeout"_s, 1, 59999);
    if (parser.isSet(u"patience"_s))
        line.patienceSeconds = numberOf(parser, u"patience"_s, 1, 86'400);
    line.stripOperator = parser.isSet(u"strip-operator"_s);
    line.get = parser.isSet(u"get"_s);
    if (!line.saveFile.isEmpty() && !line.get)
        refuse(u"save"_s, line.saveFile, u"needs --get"_s);
}

/// A switch is never asked for its values: newer toolkits complain of that.
bool isSwitch(const Option &option)
{
    return *option.value == '\0';
}

void readDemo(const QCommandLineParser &parser, CommandLine &line)
{
    line.demo = parser.isSet(u"demo"_s);
    line.replayFile = parser.value(u"replay"_s);
    line.replaysFast = parser.isSet(u"fast"_s);
    if (!line.demo && parser.isSet(u"replay"_s))
        refuse(u"replay"_s, line.replayFile, u"needs --demo"_s);
    if (line.replaysFast && !parser.isSet(u"replay"_s))
        refuse(u"fast"_s, {}, u"needs --replay FILE"_s);
}

/// A value that is empty, or of which only the last would count, is a slip worth telling.
void refuseEmptyAndRepeated(const QCommandLineParser &parser)
{
    for (const Option &option : options) {
        if (isSwitch(option))
            continue;
        const QString name = QLatin1String(option.name);
        const QStringList values = parser.values(name);
        if (values.contains(QString()))
            refuse(name, {}, u"%1 is missing"_s.arg(QLatin1String(option.value)));
        if (values.size() > 1 && !isRepeatable(name))
            refuse(name, values.last(), u"it is given twice"_s);
    }
}

/// An option of the unattended run without it is a slip worth telling.
void refuseStrayRunOptions(const QCommandLineParser &parser)
{
    for (const Option &option : options) {
        const QString name = QLatin1String(option.name);
        if (option.isOfRun && parser.isSet(name))
            refuse(name, isSwitch(option) ? QString() : parser.value(name), u"needs --run LIST"_s);
    }
}

} // namespace

CommandLine CommandLine::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        throw PlatformError(parser.errorText());

    refuseEmptyAndRepeated(parser);
    CommandLine line;
    for (const Option &option : options) {
        if (option.field)
            line.*option.field = parser.value(QLatin1String(option.name));
    }
    if (parser.isSet(u"help"_s))
        line.task = Task::Help;
    else if (parser.isSet(u"version"_s))
        line.task = Task::Version;
    else if (parser.isSet(u"list-ports"_s))
        line.task = Task::ListPorts;

    for (const QString &value : parser.values(u"com"_s)) {
        const auto [number, device] = numbered(u"com"_s, value, 1, 9999);
        if (line.serialDevices.contains(number))
            refuse(u"com"_s, value, u"the number is given twice"_s);
        line.serialDevices.insert(number, device);
    }
    for (const QString &value : parser.values(u"gpib"_s)) {
        const auto [board, adapter] = numbered(u"gpib"_s, value, 0, 3);
        QString &chosen = line.gpibAdapters.at(static_cast<size_t>(board));
        if (!chosen.isEmpty())
            refuse(u"gpib"_s, value, u"the number is given twice"_s);
        chosen = GpibAdapterChoice::parse(adapter).toString();
    }
    readDemo(parser, line);
    readSetups(parser, line);
    if (line.task == Task::ListPorts && parser.isSet(u"run"_s))
        refuse(u"run"_s, parser.value(u"run"_s), u"--list-ports runs no list"_s);
    if (line.task != Task::Window)
        return line;

    const QStringList lists = parser.positionalArguments();
    if (parser.isSet(u"run"_s)) {
        readRun(parser, line);
        if (!lists.isEmpty())
            throw PlatformError(u"%1: only one list can be run"_s.arg(lists.first()));
        return line;
    }
    refuseStrayRunOptions(parser);
    readWindow(parser, line);
    if (lists.size() > 1)
        throw PlatformError(u"%1: only one list can be loaded"_s.arg(lists.at(1)));
    line.list = lists.value(0);
    return line;
}

QString CommandLine::helpText()
{
    QCommandLineParser parser;
    addOptions(parser);
    return parser.helpText() + u"\nExit: 0 done or passed, 1 a check failed, 2 anything else.\n"_s;
}

} // namespace corvane
