// SPDX-License-Identifier: GPL-3.0-or-later
// The least that a program on Qt can do with a serial port: everything that arrives goes into one
// string. The measure of the receive path.
#include "perf/PtyReading.h"

#include <QCoreApplication>
#include <QSerialPort>

using namespace corvane::perf;

/// BarePtyReader DEVICE BYTES
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 3)
        return 2;
    const qsizetype bytes = QByteArray(argv[2]).toLongLong();
    QSerialPort port(QString::fromLocal8Bit(argv[1]));
    port.setBaudRate(115200);
    if (!port.open(QIODevice::ReadWrite)) {
        std::fprintf(stderr, "%s: %s\n", argv[1], qPrintable(port.errorString()));
        return 1;
    }
    const ReaderReport report;
    QString text;
    QObject::connect(&port, &QSerialPort::readyRead, &port, [&] {
        text += QString::fromLatin1(port.readAll());
        if (text.size() < bytes)
            return;
        report.done(text.size() == bytes);
        QCoreApplication::quit();
    });
    return QCoreApplication::exec();
}
