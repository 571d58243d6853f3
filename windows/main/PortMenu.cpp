// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/PortMenu.h"

#include "core/channels/SerialSession.h"
#include "devices/SerialLock.h"
#include "devices/SerialPort.h"

#include <QFileInfo>

namespace corvane {

namespace {

/// As in "FTDI FT232R USB UART, A50285BI".
QString adapterOf(const SerialPortEntry &port)
{
    QStringList parts{u"%1 %2"_s.arg(port.maker, port.description).trimmed(), port.serialNumber};
    parts.removeAll(QString());
    return parts.join(u", "_s);
}

QString textOf(const SerialPortEntry &port, const QString &openHere)
{
    const QFileInfo device(port.device);
    const auto user = serialLock::user(device.exists() ? device.canonicalFilePath() : port.device);
    QString use = user ? u"in use by "_s + user->toString() : QString();
    if (user && user->isOwn)
        use = port.device == openHere ? u"open here"_s : u"open elsewhere in this program"_s;
    QStringList parts{u"%1   %2"_s.arg(port.number).arg(port.device), adapterOf(port), use};
    parts.removeAll(QString());
    return parts.join(u"   "_s).replace(u'&', u"&&"_s);
}

} // namespace

PortMenu::PortMenu(SerialSession &session, QWidget *parent)
    : QMenu(parent)
    , m_session(session)
{
    connect(this, &QMenu::aboutToShow, this, &PortMenu::fill);
}

void PortMenu::fill()
{
    clear();
    for (const SerialPortEntry &port : m_session.ports()) {
        QAction *entry = addAction(textOf(port, m_session.port().openDevice()));
        entry->setCheckable(true);
        const QString number = QString::number(port.number);
        entry->setChecked(m_session.portEntry() == number || m_session.portEntry() == port.device);
        connect(entry, &QAction::triggered, this,
                [this, number] { m_session.setPortEntry(number); });
    }
    if (isEmpty())
        addAction(u"This computer lists no serial port; an adapter appears when it is plugged in"_s)
            ->setEnabled(false);
}

} // namespace corvane
