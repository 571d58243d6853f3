// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/LibraryAdapter.h"

#include "Faults.h"
#include "devices/GpibAdapterFactory.h"
#include "devices/IbBus.h"
#include "devices/SystemClock.h"
#include "devices/WaitGroup.h"

using namespace corvane;

class LibraryAdapterTest : public testing::Test
{
protected:
    LibraryAdapterTest()
    {
        for (const char *name : {"STANDIN_REPLY", "STANDIN_FAIL"})
            qunsetenv(name);
        qputenv("STANDIN_HOLD", holding.toUtf8());
        qputenv("STANDIN_LOG", folder.filePath(u"log"_s).toUtf8());
        EXPECT_TRUE(QFile(deviceFiles + u'2').open(QIODevice::WriteOnly));
        makeIb(2);
    }

    static QString standIns()
    {
        return QCoreApplication::applicationDirPath() + u"/libstandins.so"_s;
    }

    void makeIb(int board)
    {
        adapter = std::make_unique<LibraryAdapter>(std::make_shared<IbBus>(
            std::make_shared<const IbLibrary>(standIns()), board, deviceFiles));
    }

    void makeVisa()
    {
        adapter = GpibAdapterFactory({.ib = {}, .visa = standIns()})
                      .make({.kind = GpibAdapterChoice::Kind::Visa}, 2);
    }

    /// The calls since the last time.
    QByteArrayList calls()
    {
        QFile file(folder.filePath(u"log"_s));
        EXPECT_TRUE(file.open(QIODevice::ReadWrite));
        QByteArrayList lines = file.readAll().trimmed().split('\n');
        file.resize(0);
        return lines;
    }

    QByteArray read(int timeoutMs = 1000) { return adapter->read(meter, timeoutMs, waits); }
    void write(const QByteArray &text = "x") { adapter->write(meter, text, 1000, waits); }

    /// From now on a read does not return.
    void hold() const { EXPECT_TRUE(QFile(holding).open(QIODevice::WriteOnly)); }

    /// Far longer than anything takes on the slowest machine.
    static constexpr int longMs = 30000;

    QTemporaryDir folder;
    const QString holding = folder.filePath(u"hold"_s);
    QString deviceFiles = folder.filePath(u"gpib"_s);
    SystemClock clock;
    WaitGroup waits{clock};
    std::unique_ptr<GpibAdapter> adapter;
    const GpibAddress meter{2, 5, {}};
};

TEST_F(LibraryAdapterTest, IbCallsCarryTheAddressAndTheTimeOutRoundedUp)
{
    qputenv("STANDIN_REPLY", "12.5\r\n");
    write("*IDN?");
    write("");
    EXPECT_EQ(read(2500), "12.5\r\n");
    EXPECT_EQ(read(3000), "12.5\r\n");
    adapter->clear({2, 30, 126}, waits);
    EXPECT_EQ(calls(),
              (QByteArrayList{"ibdev 2 5 0 11 1 0", "ibwrt 105 *IDN?", "ibconfig 105 3 12",
                              "ibrd 105", "ibrd 105", "ibdev 2 30 126 11 1 0", "ibclr 130"}));
    adapter.reset();
    EXPECT_EQ(calls(), (QByteArrayList{"ibonl 130 0", "ibonl 105 0"}));
}

TEST_F(LibraryAdapterTest, TimeOutCodesAreNeverShorterAndNeverEndless)
{
    const int rows[][2] = {{1, 5},     {2, 6},     {4, 7},      {30, 8},     {31, 9},    {101, 10},
                           {1000, 11}, {1001, 12}, {10000, 13}, {10001, 14}, {59999, 15}};
    for (const auto &[ms, code] : rows)
        EXPECT_EQ(IbLibrary::timeoutCode(ms), code) << ms;
}

TEST_F(LibraryAdapterTest, LongRepliesComeInPartsAndAPartIsKeptAtATimeOut)
{
    const QByteArray longReply(100'000, 'y');
    for (const char *timeOut : {"ibrd 6", "viRead 0x15"}) {
        qputenv("STANDIN_FAIL", "");
        qputenv("STANDIN_REPLY", longReply);
        EXPECT_EQ(read(), longReply);
        EXPECT_EQ(adapter->replyEnd(), gpibReply::End::Marked);
        qputenv("STANDIN_FAIL", timeOut);
        qputenv("STANDIN_REPLY", "12.");
        EXPECT_EQ(read(), "12.");
        EXPECT_EQ(adapter->replyEnd(), gpibReply::End::TimedOut);
        makeVisa();
    }
}

TEST_F(LibraryAdapterTest, ErrorsOfTheLibrariesBecomeWordsThatHelp)
{
    using Row = std::tuple<bool, const char *, const char *>; // with VISA, failure, what is said
    const Row rows[] = {
        {false, "ibdev 7", "no such board"},
        {false, "ibdev 0x0d00", "add your user to the group"}, // errno 13 above error 0
        {false, "ibdev 0x0200", "(error 2)"},
        {false, "ibwrt 2", "no device listens"},
        {false, "ibwrt 6", "did not take the bytes"},
        {false, "ibwrt 14", "check the cables"},
        {false, "ibwrt 99", "error 99"},
        {false, "ibclr 2", nullptr},
        {false, "ibclr 5", "GPIB2::5: the board is not the system controller"},
        {false, "ibrd 1", "controller in charge"},
        {true, "viOpenDefaultRM 0", "does not start"},
        {true, "viOpen 0x3c", "described by the library (VISA status bfff003c)"},
        {true, "viOpen 0x11", "GPIB2::5: the board or device is not there"}, // at the writing
        {true, "viWrite 0x5f", "no device listens"},
        {true, "viWrite 0x15", "in time"},
        {true, "viClear 0x5f", nullptr},
        {true, "viSetAttribute 0xa6", "lost"},
    };
    for (const auto &[visa, failure, said] : rows) {
        visa ? makeVisa() : makeIb(2);
        qputenv("STANDIN_FAIL", failure);
        EXPECT_TRUE(failsSaying(said, [this] {
            adapter->clear(meter, waits);
            write();
            read();
        })) << failure;
        qunsetenv("STANDIN_FAIL");
        EXPECT_TRUE(failsSaying(nullptr, [this] { write(); })) << failure;
    }
}

TEST_F(LibraryAdapterTest, VisaCallsNameTheDeviceAndTheTimeOut)
{
    makeVisa();
    qputenv("STANDIN_REPLY", "12.5\n");
    write("*IDN?");
    EXPECT_EQ(read(2500), "12.5\n");
    adapter->clear({2, 5, 98}, waits);
    adapter.reset();
    EXPECT_EQ(calls(), (QByteArrayList{"viOpenDefaultRM 1", "viOpen 1 GPIB2::5::INSTR 0",
                                       "viSetAttribute 2 3fff001a 1000", "viWrite 2 *IDN?",
                                       "viSetAttribute 2 3fff001a 2500", "viRead 2",
                                       "viOpen 1 GPIB2::5::2::INSTR 0", "viClear 2", "viClose 2",
                                       "viClose 2", "viClose 1"}));
}

TEST_F(LibraryAdapterTest, ALibraryIsNotEvenAskedForABoardWithoutADeviceFileOrAWrongAddress)
{
    makeIb(3);
    EXPECT_TRUE(failsSaying("gpib3; load the board's kernel driver", [this] { write(); }));
    makeIb(2);
    EXPECT_TRUE(failsSaying("no address", [this] { adapter->open({2, 31, {}}, waits); }));
    EXPECT_TRUE(failsSaying("no address", [this] { adapter->open({2, 5, 95}, waits); }));
    EXPECT_EQ(calls(), QByteArrayList{""});
}

TEST_F(LibraryAdapterTest, AStuckCallKeepsItsCallerNoLongerThanItsTimeAndBlocksTheBusUntilItReturns)
{
    write();
    hold();
    qputenv("STANDIN_REPLY", "late");
    int ticks = 0;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&ticks] { ++ticks; });
    tick.start(10);
    EXPECT_EQ(read(100), "");
    EXPECT_GT(ticks, 0);
    EXPECT_TRUE(failsSaying("earlier call", [this] { adapter->write(meter, "x", 50, waits); }));
    QTimer::singleShot(50, &tick, [this] { QFile::remove(holding); });
    adapter->write(meter, "after", longMs, waits); // waits for the read to return
    EXPECT_EQ(calls().last(), "ibwrt 105 after");

    hold();
    QTimer::singleShot(50, &tick, [this] { waits.close(); });
    const quint32 start = clock.MS_TIMER();
    EXPECT_EQ(read(longMs), "");
    EXPECT_LT(clock.MS_TIMER() - start, quint32{longMs});
    QFile::remove(holding);
    adapter.reset();
    EXPECT_EQ(calls().last(), "ibonl 105 0");
}

TEST_F(LibraryAdapterTest, AMissingLibraryIsAFaultThatSaysWhatToDo)
{
    using Kind = GpibAdapterChoice::Kind;
    const QString none = folder.filePath(u"none.so"_s);
    using Reader = GpibAdapterFactory::Reader;
    struct Row
    {
        Kind kind;
        const char *said;
        const char *onCommandLine; // what it ends with there
    };
    const Row rows[] = {
        {Kind::Auto, "choose a \"++\" controller (", "(--gpib 1=tcp:HOST)"},
        {Kind::None, "has no adapter; choose one (", "(--gpib 1=ADAPTER)"},
        {Kind::Library, "no GPIB library is installed", "(another adapter: --gpib 1=ADAPTER)"},
        {Kind::Visa, "no VISA library is installed", "(another adapter: --gpib 1=ADAPTER)"},
        {Kind::Serial, "GPIB controller: ", "(another adapter: --gpib 1=ADAPTER)"},
    };
    for (const Reader reader : {Reader::Window, Reader::CommandLine}) {
        const GpibAdapterFactory factory({.ib = none, .visa = none}, reader);
        EXPECT_TRUE(factory.installed().empty());
        for (const Row &row : rows) {
            const auto made = factory.make({.kind = row.kind, .device = none}, 1);
            const char *end = reader == Reader::Window ? "\"Adapter...\" on the IEEE 488 tab)"
                                                       : row.onCommandLine;
            for (const char *said : {row.said, end})
                EXPECT_TRUE(failsSaying(said, [&] { made->open(meter, waits); }));
        }
    }
    const GpibAdapterFactory found({.ib = standIns(), .visa = standIns()});
    EXPECT_EQ(found.installed().value(0).file, standIns());
    // The ib* library is there, its board is not.
    EXPECT_TRUE(found.make({}, 1)->description().startsWith(u"GPIB1 of the VISA"_s));
}
