// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/QtSerialPort.h"

#include "devices/PlatformError.h"
#include "devices/SerialLine.h"
#include "devices/SerialLock.h"
#include "devices/SerialSettings.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include <chrono>

namespace corvane {

namespace {

using namespace std::chrono_literals;

/// Whether the user may use the device file; systems without such files decide at opening.
bool isPermitted(const QString &device)
{
#ifdef Q_OS_UNIX
    return access(QFile::encodeName(device).constData(), R_OK | W_OK) == 0;
#else
    Q_UNUSED(device)
    return true;
#endif
}

QString permissionFault(const QString &device)
{
    const QFileInfo file(device);
    const bool groupMay =
        file.permission(QFileDevice::ReadGroup) && file.permission(QFileDevice::WriteGroup);
    if (groupMay && !file.group().isEmpty())
        return u"permission denied; it belongs to the group %1: add your user to "
               "that group (sudo usermod -aG %1 $USER) and log in again"_s.arg(file.group());
    return u"permission denied; only its owner %1 may use it: ask the administrator "
           "for access"_s.arg(file.owner());
}

/// One device, one spelling: the lock against a second opening goes by the name.
QString canonical(const QString &device)
{
    const QString path = QFileInfo(device).canonicalFilePath();
    return device.startsWith(u'/') && !path.isEmpty() ? path : device;
}

} // namespace

QtSerialPort::QtSerialPort(const SerialPortList &list)
    : m_list(list)
{
    m_port.setReadBufferSize(mostAtOnce);
    // Newer toolkits say nothing at a hang-up, so the line is looked at as well.
    m_lineCheck.setInterval(1s);
    m_lineCheck.setTimerType(Qt::PreciseTimer);
    connect(&m_lineCheck, &QTimer::timeout, this, &QtSerialPort::checkLine);
    connect(&m_port, &QSerialPort::readyRead, this, [this] {
        if (m_open && rThreshold() > 0 && m_port.bytesAvailable() >= rThreshold())
            Q_EMIT onComm(CommEvent::receive);
    });
    connect(&m_port, &QSerialPort::errorOccurred, this, &QtSerialPort::handleError);
}

QtSerialPort::~QtSerialPort()
{
    close();
}

void QtSerialPort::setPortOpen(bool open)
{
    if (open == m_open)
        return;
    if (open)
        this->open();
    else
        close();
}

void QtSerialPort::open()
{
    const auto wanted = SerialSettings::parse(settings());
    const int number = device().isEmpty() ? commPort() : 0;
    const QString found = device().isEmpty() ? m_list.device(number) : m_list.device(device());
    m_label = number > 0 ? u"serial port %1 (%2)"_s.arg(number).arg(found) : found;
    m_port.clearError();
    const QString path = canonical(found);
    m_port.setPortName(path);
    applySettings(wanted);
    // The toolkit takes another program's lock for a left-over and deletes it.
    if (const auto holder = serialLock::holder(path))
        throw PlatformError(
            u"%1: in use by %2; close it there first"_s.arg(m_label, holder->toString()));
    if (!m_port.open(QIODevice::ReadWrite))
        throw PlatformError(u"%1: %2"_s.arg(m_label, openFault(found)));
    const QString refused = serialLine::refusedSetting(m_port, wanted);
    if (!refused.isEmpty()) {
        m_port.close();
        throw PlatformError(u"%1: the port cannot do %2"_s.arg(m_label, refused));
    }
    m_port.setDataTerminalReady(true); // a line without that wire is as good
    m_port.clearError();
    m_open = true;
    m_device = found;
    m_place = found + u", "_s + wanted.toString();
    m_lineCheck.start();
}

void QtSerialPort::close()
{
    m_open = false;
    m_lineCheck.stop();
    if (m_port.isOpen())
        m_port.close();
}

void QtSerialPort::applySettings(const SerialSettings &settings)
{
    // All before the opening: a pseudo terminal refuses some of them afterwards.
    const auto require = [this](bool taken, const QString &what) {
        if (!taken)
            throw PlatformError(u"%1: the port cannot do %2"_s.arg(m_label, what));
    };
    require(m_port.setBaudRate(settings.baud), u"the baud rate %1"_s.arg(settings.baud));
    require(m_port.setParity(settings.parity), u"the parity in %1"_s.arg(settings.toString()));
    require(m_port.setDataBits(settings.dataBits), u"%1 data bits"_s.arg(settings.dataBits));
    require(m_port.setStopBits(settings.stopBits),
            u"the stop bits in %1"_s.arg(settings.toString()));
    m_port.setFlowControl(QSerialPort::NoFlowControl);
}

QString QtSerialPort::openFault(const QString &device) const
{
    switch (m_port.error()) {
    case QSerialPort::DeviceNotFoundError: {
        const auto count = SerialPortList::systemPorts().size();
        return u"there is no such device; the system lists %1 serial port(s). Is the "
               "adapter plugged in?"_s.arg(count);
    }
    case QSerialPort::PermissionError:
        if (!isPermitted(device))
            return permissionFault(device);
        return u"in use by another Channel or program (%1); close it there first"_s.arg(
            m_port.errorString());
    case QSerialPort::UnsupportedOperationError:
        return u"no serial port, or one that cannot do %1 (%2)"_s.arg(settings(),
                                                                      m_port.errorString());
    default:
        return u"cannot be opened: %1"_s.arg(m_port.errorString());
    }
}

bool QtSerialPort::put(const QByteArray &bytes)
{
    if (!m_open)
        throw PlatformError(u"the serial port is not open"_s);
    if (m_port.bytesToWrite() > mostUnsent)
        throw PlatformError(u"%1: the device takes no more data"_s.arg(m_label));
    if (m_port.write(bytes) != bytes.size())
        throw PlatformError(u"%1: cannot send: %2"_s.arg(m_label, m_port.errorString()));
    return true;
}

QByteArray QtSerialPort::take()
{
    if (!m_open)
        return {};
    const qint64 waiting = m_port.bytesAvailable();
    QByteArray bytes =
        m_port.read(inputLen() > 0 ? std::min<qint64>(inputLen(), waiting) : waiting);
    m_port.setReadBufferSize(mostAtOnce); // lets a driver that stopped at a full buffer go on
    return bytes;
}

void QtSerialPort::handleError(QSerialPort::SerialPortError error)
{
    if (!m_open)
        return;
    switch (error) {
    case QSerialPort::NoError:
    case QSerialPort::TimeoutError:
        return;
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
    case QSerialPort::ResourceError:
    case QSerialPort::PermissionError:
    case QSerialPort::UnknownError:
        // These repeat without end while the port is open.
        lose();
        return;
    default:
        checkLine();
    }
}

void QtSerialPort::checkLine()
{
    if (m_open && serialLine::isHungUp(m_port))
        lose();
}

void QtSerialPort::lose()
{
    // First closed, then told: the driver would call again while the port is open.
    close();
    const QString description =
        u"%1: the device went away; plug it in and connect again"_s.arg(m_label);
    QMetaObject::invokeMethod(
        this, [this, description] { Q_EMIT lost(description); }, Qt::QueuedConnection);
}

} // namespace corvane
