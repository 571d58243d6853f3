#include "app/CommandLine.h"

#include "devices/GpibAdapterChoice.h"
#include "devices/PlatformError.h"

#include <QCommandLineParser>

namespace corvane {

namespace {

const std::array channelNames = {QStringLiteral("rs485"), QStringLiteral("rs232"),
                                 QStringLiteral("gpib"), QStringLiteral("tcp1"),
                                 QStringLiteral("tcp2")};

[[noreturn]] void refuse(const QString &option, const QString &value, const QString &expected)
{
    throw PlatformError(QStringLiteral("--%1 %2: %3").arg(option, value, expected));
}

/// The options and what each of them takes; a value's name is empty for a switch.
struct Option
{
    const char *name;
    const char *value;
    const char *help;
};

constexpr Option options[] = {
    {"demo", "",
     "With the simulated bench behind every Channel; without a display, ask each of them and run "
     "LIST on TCP/IP-1."},
    {"com", "N=DEVICE", "Serial port number N is DEVICE (repeatable)."},
    {"gpib", "N=ADAPTER",
     "GPIB board N: auto | none | tcp:HOST[:PORT] | serial:DEVICE | library[:BOARD] | visa "
     "(repeatable)."},
    {"run", "LIST", "Run LIST without a display."},
    {"channel", "NAME", "Channel of the run: rs485 | rs232 | gpib | tcp1 | tcp2."},
    {"port", "P", "Port entry: serial port number, or TCP port."},
    {"host", "H", "Remote host of a TCP Channel."},
    {"address", "A", "RS-485 address, or GPIB address (5, or GPIB0::5)."},
    {"settings", "S", "Serial settings, as in 9600,N,8,1."},
    {"timeout", "MS", "GPIB time-out, 1 to 59999 ms."},
    {"loop", "MS", "Loop time, 10 to 3600000 ms."},
    {"strip-operator", "", R"(Send "=" and "?" commands without their operator.)"},
    {"get", "", "Get list: fill the list with the device's values."},
    {"save", "FILE", "Write the list back to FILE after --get (\"-\": standard output)."},
    {"patience", "SECONDS", "Give up when a reply stays out so long (default 30)."},
    {"csv", "FILE", "Write the grid as run as comma-separated values (\"-\": as above)."},
    {"junit", "FILE", "Write the checks as run as a JUnit report (\"-\": as above)."},
    {"list-ports", "", "Print number, device, maker and description of each serial port."},
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
    parser.addPositionalArgument(QStringLiteral("LIST"),
                                 QStringLiteral("A list file to load into the window."),
                                 QStringLiteral("[LIST]"));
}

int wholeNumber(const QCommandLineParser &parser, const QString &option, int first, int last)
{
    const QString text = parser.value(option);
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < first || number > last)
        refuse(option, text,
               QStringLiteral("a whole number from %1 to %2 is expected").arg(first).arg(last));
    return number;
}

/// Splits "N=TEXT".
std::pair<int, QString> numbered(const QString &option, const QString &value, int first, int last)
{
    const qsizetype equals = value.indexOf(u'=');
    bool isNumber = false;
    const int number = value.left(equals).toInt(&isNumber);
    if (equals < 0 || !isNumber || number < first || number > last || equals + 1 == value.size())
        refuse(option, value,
               QStringLiteral("N=... with N from %1 to %2 is expected").arg(first).arg(last));
    return {number, value.mid(equals + 1)};
}

void readRun(const QCommandLineParser &parser, CommandLine &line)
{
    const QString name = parser.value(QStringLiteral("channel"));
    const auto found = std::find(channelNames.begin(), channelNames.end(), name.toLower());
    if (found == channelNames.end())
        refuse(QStringLiteral("channel"), name,
               QStringLiteral("one of rs485, rs232, gpib, tcp1, tcp2 is expected"));
    line.task = CommandLine::Task::Run;
    line.channel = static_cast<int>(found - channelNames.begin());
    line.list = parser.value(QStringLiteral("run"));
    if (parser.isSet(QStringLiteral("timeout")))
        line.timeoutMs = wholeNumber(parser, QStringLiteral("timeout"), 1, 59999);
    if (parser.isSet(QStringLiteral("loop")))
        line.loopMs = wholeNumber(parser, QStringLiteral("loop"), 10, 3'600'000);
    if (parser.isSet(QStringLiteral("patience")))
        line.patienceSeconds = wholeNumber(parser, QStringLiteral("patience"), 1, 86'400);
    line.port = parser.value(QStringLiteral("port"));
    line.host = parser.value(QStringLiteral("host"));
    line.address = parser.value(QStringLiteral("address"));
    line.settings = parser.value(QStringLiteral("settings"));
    line.stripOperator = parser.isSet(QStringLiteral("strip-operator"));
    line.get = parser.isSet(QStringLiteral("get"));
    line.saveFile = parser.value(QStringLiteral("save"));
    line.csvFile = parser.value(QStringLiteral("csv"));
    line.junitFile = parser.value(QStringLiteral("junit"));
    if (!line.saveFile.isEmpty() && !line.get)
        refuse(QStringLiteral("save"), line.saveFile, QStringLiteral("needs --get"));
}

/// A switch is never asked for its values: newer toolkits complain of that.
bool isSwitch(const Option &option)
{
    return *option.value == '\0';
}

/// The value that an option was given; empty for a switch.
QString given(const QCommandLineParser &parser, const char *name)
{
    const auto *option =
        std::find_if(std::begin(options), std::end(options), [name](const Option &each) {
            return QLatin1String(each.name) == QLatin1String(name);
        });
    return isSwitch(*option) ? QString() : parser.value(QLatin1String(name));
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
            refuse(name, {}, QStringLiteral("%1 is missing").arg(QLatin1String(option.value)));
        if (values.size() > 1 && !isRepeatable(name))
            refuse(name, values.last(), QStringLiteral("it is given twice"));
    }
}

/// An option of the unattended run without it is a slip worth telling.
void refuseStrayRunOptions(const QCommandLineParser &parser)
{
    for (const char *name : {"channel", "port", "host", "address", "settings", "timeout", "loop",
                             "strip-operator", "get", "save", "patience", "csv", "junit"}) {
        if (parser.isSet(QLatin1String(name)))
            refuse(QLatin1String(name), given(parser, name), QStringLiteral("needs --run LIST"));
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
    if (parser.isSet(QStringLiteral("help")))
        line.task = Task::Help;
    else if (parser.isSet(QStringLiteral("version")))
        line.task = Task::Version;
    else if (parser.isSet(QStringLiteral("list-ports")))
        line.task = Task::ListPorts;

    for (const QString &value : parser.values(QStringLiteral("com"))) {
        const auto [number, device] = numbered(QStringLiteral("com"), value, 1, 9999);
        if (line.serialDevices.contains(number))
            refuse(QStringLiteral("com"), value, QStringLiteral("the number is given twice"));
        line.serialDevices.insert(number, device);
    }
    for (const QString &value : parser.values(QStringLiteral("gpib"))) {
        const auto [board, adapter] = numbered(QStringLiteral("gpib"), value, 0, 3);
        QString &chosen = line.gpibAdapters.at(static_cast<size_t>(board));
        if (!chosen.isEmpty())
            refuse(QStringLiteral("gpib"), value, QStringLiteral("the number is given twice"));
        chosen = GpibAdapterChoice::parse(adapter).toString();
    }
    line.demo = parser.isSet(QStringLiteral("demo"));
    if (line.task != Task::Window)
        return line;

    const QStringList lists = parser.positionalArguments();
    if (parser.isSet(QStringLiteral("run"))) {
        readRun(parser, line);
        if (!lists.isEmpty())
            throw PlatformError(QStringLiteral("%1: only one list can be run").arg(lists.first()));
        return line;
    }
    refuseStrayRunOptions(parser);
    if (lists.size() > 1)
        throw PlatformError(QStringLiteral("%1: only one list can be loaded").arg(lists.at(1)));
    line.list = lists.value(0);
    return line;
}

QString CommandLine::helpText()
{
    QCommandLineParser parser;
    addOptions(parser);
    return parser.helpText() +
           QStringLiteral("\nExit: 0 done or passed, 1 a check failed, 2 anything else.\n");
}

} // namespace corvane
