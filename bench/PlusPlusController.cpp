// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/PlusPlusController.h"

#include "bench/ReplySender.h"
#include "bench/Text.h"

#include <memory>
#include <utility>

namespace corvane::bench {

PlusPlusController::PlusPlusController()
{
    m_gap.setSingleShot(true);
    m_gap.setTimerType(Qt::PreciseTimer);
    connect(&m_gap, &QTimer::timeout, this, &PlusPlusController::finishRead);
}

void PlusPlusController::connectStation(int primary, GpibStation &station, int secondary)
{
    m_stations[{primary, secondary}] = &station;
    connect(&station, &GpibStation::ready, this, &PlusPlusController::pump);
}

void PlusPlusController::attach(ByteStream &stream)
{
    auto *sender = new ReplySender(stream, m_faults);
    const auto parser = std::make_shared<PlusPlusParser>();
    connect(&stream, &ByteStream::received, this,
            [this, &stream, sender, parser](const QByteArray &bytes) {
                for (const PlusPlusLine &line : parser->feed(bytes))
                    m_waiting.push_back({&stream, sender, line});
                work();
            });
    connect(&stream, &ByteStream::closed, this, [this, &stream, parser] {
        *parser = {};
        std::erase_if(m_waiting, [&](const Waiting &one) { return one.stream == &stream; });
        if (m_reading && m_current.stream == &stream)
            finishRead();
    });
}

std::span<const PlusPlusController::Number> PlusPlusController::numbers()
{
    static constexpr Number table[] = {
        {"mode", 0, 1, &Settings::mode},
        {"auto", 0, 1, &Settings::automatic},
        {"eoi", 0, 1, &Settings::eoi},
        {"eos", 0, 3, &Settings::eos},
        {"eot_enable", 0, 1, &Settings::eotEnable},
        {"eot_char", 0, 255, &Settings::eotChar},
        {"read_tmo_ms", 1, 3000, &Settings::readTimeoutMs},
        {"savecfg", 0, 1, &Settings::saveConfiguration},
    };
    return table;
}

std::span<const PlusPlusController::Action> PlusPlusController::actions()
{
    using Self = PlusPlusController;
    static constexpr Action table[] = {
        {"addr", &Self::address},    {"read", &Self::read},       {"clr", &Self::clearDevice},
        {"ver", &Self::version},     {"spoll", &Self::showZero},  {"srq", &Self::showZero},
        {"ifc", &Self::nothingToDo}, {"trg", &Self::nothingToDo}, {"loc", &Self::nothingToDo},
        {"llo", &Self::nothingToDo}, {"rst", &Self::nothingToDo},
    };
    return table;
}

void PlusPlusController::work()
{
    while (!m_reading && !m_waiting.empty()) {
        m_current = m_waiting.front();
        m_waiting.pop_front();
        if (m_current.line.command)
            command(m_current.line.text);
        else
            writeToDevice(m_current.line.text);
    }
}

void PlusPlusController::command(const QByteArray &line)
{
    const auto [name, arguments] = text::wordAndRest(line);
    bool understood = false;
    for (const Number &number : numbers()) {
        if (name == number.name)
            understood = setOrShow(number, arguments);
    }
    for (const Action &action : actions()) {
        if (name == action.name)
            understood = (this->*action.run)(arguments);
    }
    if (!understood)
        reply("Unrecognized command");
}

bool PlusPlusController::setOrShow(const Number &number, const QByteArray &arguments)
{
    int &value = m_settings.*number.member;
    if (arguments.isEmpty()) {
        reply(QByteArray::number(value));
        return true;
    }
    const auto wanted = text::whole(arguments, number.low, number.high);
    if (!wanted)
        return false;
    value = *wanted;
    if (number.member == &Settings::automatic && value == 1)
        startRead(ReadUntil::End);
    return true;
}

bool PlusPlusController::address(const QByteArray &arguments)
{
    if (arguments.isEmpty()) {
        QByteArray shown = QByteArray::number(m_primary);
        if (m_secondary > 0)
            shown += ' ' + QByteArray::number(m_secondary);
        reply(shown);
        return true;
    }
    const QList<QByteArray> parts = arguments.simplified().split(' ');
    const auto primary = text::whole(parts[0], 0, 30);
    const auto secondary = parts.size() > 1 ? text::whole(parts[1], 96, 126) : std::optional(0);
    if (!primary || !secondary || parts.size() > 2)
        return false;
    m_primary = *primary;
    m_secondary = *secondary;
    return true;
}

bool PlusPlusController::read(const QByteArray &arguments)
{
    if (arguments.isEmpty()) {
        startRead(ReadUntil::TimeOut);
    } else if (arguments == "eoi") {
        startRead(ReadUntil::End);
    } else {
        const auto character = text::whole(arguments, 0, 255);
        if (!character)
            return false;
        startRead(ReadUntil::Character, static_cast<char>(*character));
    }
    return true;
}

bool PlusPlusController::clearDevice(const QByteArray &)
{
    if (GpibStation *addressed = station())
        addressed->clear();
    return true;
}

bool PlusPlusController::version(const QByteArray &)
{
    reply(m_version);
    return true;
}

bool PlusPlusController::showZero(const QByteArray &)
{
    reply("0");
    return true;
}

bool PlusPlusController::nothingToDo(const QByteArray &)
{
    return true;
}

void PlusPlusController::writeToDevice(const QByteArray &bytes)
{
    if (m_settings.mode == 0)
        return;
    if (GpibStation *addressed = station()) {
        static constexpr const char *terminators[] = {"\r\n", "\r", "\n", ""};
        addressed->listen(bytes + terminators[m_settings.eos], m_settings.eoi == 1);
    } else {
        m_unheard(m_primary, m_secondary, bytes);
    }
    if (m_settings.automatic == 1)
        startRead(ReadUntil::End);
}

GpibStation *PlusPlusController::station() const
{
    const auto found = m_stations.find({m_primary, m_secondary});
    return found == m_stations.end() ? nullptr : found->second;
}

void PlusPlusController::startRead(ReadUntil until, char character)
{
    m_reading = true;
    m_until = until;
    m_untilCharacter = character;
    m_gap.start(m_settings.readTimeoutMs);
    pump();
}

void PlusPlusController::pump()
{
    GpibStation *talker = m_reading ? station() : nullptr;
    if (!talker)
        return;
    const auto stop =
        m_until == ReadUntil::Character ? std::optional(m_untilCharacter) : std::nullopt;
    while (m_reading) {
        const GpibStation::Talk said = talker->talk(stop);
        if (said.bytes.isEmpty())
            return;
        // The time-out counts from byte to byte.
        m_gap.start(m_settings.readTimeoutMs);
        QByteArray bytes = said.bytes;
        if (said.end && m_settings.eotEnable == 1)
            bytes.append(static_cast<char>(m_settings.eotChar));
        const bool stopped = stop && bytes.endsWith(*stop);
        send(bytes);
        if ((said.end && m_until == ReadUntil::End) || stopped)
            finishRead();
    }
}

void PlusPlusController::finishRead()
{
    m_gap.stop();
    if (!std::exchange(m_reading, false))
        return;
    // Never from inside the work or the talk that led here.
    QMetaObject::invokeMethod(this, &PlusPlusController::work, Qt::QueuedConnection);
}

void PlusPlusController::send(const QByteArray &bytes)
{
    if (m_current.stream)
        m_current.sender->send({{0, bytes, true}});
}

} // namespace corvane::bench
