corvane_test(main SOURCES
                 ChannelDesk.h CommandLineTest.cpp GpibChannelTest.cpp MainTest.cpp ResponseTest
                     .cpp SerialChannelTest.cpp TcpChannelTest.cpp TrafficLogTest.cpp USES main)
