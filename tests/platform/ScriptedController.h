#pragma once

#include <QByteArrayList>
#include <QTcpServer>
#include <QTcpSocket>

#include <deque>

namespace corvane {

/// A "++" controller on loopback with one device behind it, and with faults that a test can order.
/// It keeps the lines it was sent, escapes included, and works them off one after the other: a read
/// without a reply holds up what follows for the read time-out.
class ScriptedController : public QObject
{
    Q_OBJECT

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

    ScriptedController();

    [[nodiscard]] int port() const { return m_server.serverPort(); }
    void stop();

    Fault fault = Fault::None;
    QByteArray versionText = "AR488 GPIB controller, ver. 0.53\r\n";
    std::deque<QByteArray> replies; ///< what the device answers, one a read
    QByteArrayList lines;
    int connections = 0;

private:
    void accept();
    void receive();
    void workOff();
    void answerRead();
    void say(const QByteArray &text);
    void pause(int ms, const QByteArray &thenSay = {});

    QTcpServer m_server;
    QTcpSocket *m_client = nullptr;
    QByteArray m_input;
    std::deque<QByteArray> m_todo;
    int m_readTimeoutMs = 1200;
    bool m_paused = false;
};

} // namespace corvane
