#pragma once

#include <QByteArrayList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <deque>

namespace corvane {

/// A "++" controller on loopback with one device behind it, and with faults that a test can order.
/// It works its lines off one after the other: a read without a reply holds up what follows for the
/// read time-out.
class ScriptedController : public QTcpServer
{
public:
    enum class Fault {
        None,
        Mute,      ///< answers nothing
        Gone,      ///< closes the connection at a read
        Late,      ///< answers a read after 150 ms
        Twice,     ///< says everything at a read twice
        Garbage,   ///< answers a read with rubbish only
        DropsMark, ///< forgets what it is sent during a read
        MarkFirst, ///< answers the version before the read that came earlier
        Endless    ///< talks without end
    };

    ScriptedController()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            ++connections;
            m_client = nextPendingConnection();
            m_todo.clear();
            m_paused = false;
            connect(m_client, &QIODevice::readyRead, this, [this] { receive(); });
        });
    }

    Fault fault = Fault::None;
    QByteArray versionText = "AR488 GPIB controller, ver. 0.53\r\n";
    std::deque<QByteArray> replies; ///< what the device answers, one a read
    QByteArrayList lines;           ///< what came, escapes included
    int connections = 0;

private:
    void receive()
    {
        QByteArray line;
        for (char byte = 0; m_client->getChar(&byte);) {
            if (byte == '\n') {
                lines.append(line);
                m_todo.push_back(std::exchange(line, {}));
                continue;
            }
            line += byte;
            if (byte == '\x1b' && m_client->getChar(&byte))
                line += byte;
        }
        if (fault == Fault::MarkFirst && m_todo.size() > 1)
            std::swap(m_todo[m_todo.size() - 1], m_todo[m_todo.size() - 2]);
        workOff();
    }

    void workOff()
    {
        while (!m_todo.empty() && !m_paused && fault != Fault::Mute) {
            const QByteArray line = m_todo.front();
            m_todo.pop_front();
            if (line == "++ver")
                m_client->write(versionText);
            else if (line.startsWith("++read_tmo_ms "))
                m_readTimeoutMs = line.mid(14).toInt();
            else if (line == "++read eoi")
                answerRead(replies.empty() ? QByteArray() : replies.front());
        }
    }

    void answerRead(const QByteArray &reply)
    {
        if (!replies.empty())
            replies.pop_front();
        if (fault == Fault::Garbage || fault == Fault::DropsMark || fault == Fault::Endless)
            m_todo.clear();
        if (fault == Fault::Gone)
            m_client->disconnectFromHost();
        else if (fault == Fault::Twice)
            m_client->write(reply + versionText + reply);
        else if (fault == Fault::Garbage)
            m_client->write("\x01\xff\x80garbage");
        else if (fault == Fault::Late)
            pause(150, reply);
        else if (fault == Fault::Endless)
            pause(20, "endless ");
        else if (reply.isEmpty() && fault == Fault::None)
            pause(m_readTimeoutMs, {});
        else
            m_client->write(reply);
    }

    void pause(int ms, const QByteArray &thenSay)
    {
        m_paused = true;
        QTimer::singleShot(ms, Qt::PreciseTimer, m_client, [this, thenSay] {
            m_paused = false;
            m_client->write(thenSay);
            if (fault == Fault::Endless)
                m_todo.push_back("++read eoi");
            workOff();
        });
    }

    QTcpSocket *m_client = nullptr;
    std::deque<QByteArray> m_todo;
    int m_readTimeoutMs = 1200;
    bool m_paused = false;
};

} // namespace corvane
