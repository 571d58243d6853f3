#include "ScriptedController.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace corvane {

ScriptedController::ScriptedController()
{
    EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
    connect(&m_server, &QTcpServer::newConnection, this, &ScriptedController::accept);
}

void ScriptedController::stop()
{
    m_server.close();
    if (m_client)
        m_client->abort();
}

void ScriptedController::accept()
{
    ++connections;
    m_client = m_server.nextPendingConnection();
    m_input.clear();
    m_todo.clear();
    m_paused = false;
    connect(m_client, &QIODevice::readyRead, this, &ScriptedController::receive);
}

void ScriptedController::receive()
{
    m_input += m_client->readAll();
    qsizetype start = 0;
    for (qsizetype i = 0; i < m_input.size(); ++i) {
        if (m_input[i] == '\x1b') {
            ++i;
        } else if (m_input[i] == '\n') {
            lines.append(m_input.mid(start, i - start));
            m_todo.push_back(lines.last());
            start = i + 1;
        }
    }
    m_input.remove(0, start);
    workOff();
}

void ScriptedController::workOff()
{
    if (fault == Fault::MarkFirst && m_todo.size() > 1)
        std::swap(m_todo[m_todo.size() - 1], m_todo[m_todo.size() - 2]);
    while (!m_todo.empty() && !m_paused && fault != Fault::Mute) {
        const QByteArray line = m_todo.front();
        m_todo.pop_front();
        if (line == "++ver")
            say(versionText);
        else if (line.startsWith("++read_tmo_ms "))
            m_readTimeoutMs = line.mid(14).toInt();
        else if (line == "++read eoi")
            answerRead();
    }
}

void ScriptedController::answerRead()
{
    const bool silent = replies.empty();
    const QByteArray reply = silent ? QByteArray() : replies.front();
    if (!silent)
        replies.pop_front();
    switch (fault) {
    case Fault::Gone:
        m_client->disconnectFromHost();
        m_paused = true;
        return;
    case Fault::Twice:
        say(reply + versionText + reply);
        return;
    case Fault::Garbage:
        m_todo.clear();
        say("\x01\xff\x80garbage");
        return;
    case Fault::DropsMark:
        m_todo.clear();
        say(reply);
        return;
    case Fault::Endless:
        m_todo.clear();
        say("endless ");
        m_todo.push_back("++read eoi");
        pause(20);
        return;
    default:
        if (silent)
            pause(m_readTimeoutMs);
        else if (fault == Fault::Late)
            pause(150, reply);
        else
            say(reply);
    }
}

void ScriptedController::say(const QByteArray &text)
{
    m_client->write(text);
}

void ScriptedController::pause(int ms, const QByteArray &thenSay)
{
    m_paused = true;
    QTimer::singleShot(ms, Qt::PreciseTimer, m_client, [this, thenSay] {
        m_paused = false;
        say(thenSay);
        workOff();
    });
}

} // namespace corvane
