// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BenchSupport.h"
#include "bench/Recording.h"

#include <QTemporaryDir>

namespace corvane::bench {

/// Writes recordings as the program does.
class RecordingFile
{
public:
    static constexpr const char *start =
        R"({"event":"start","time":0,"format":"corvane-traffic","version":1})"
        "\n";

    [[nodiscard]] QString path() const { return m_folder.filePath(u"r.jsonl"_s); }

    /// One line for each row, as text in short: "MS channel > bytes", "MS channel < bytes",
    /// "MS channel + place" for a connection, "MS channel @ address", and anything else as it is.
    RecordingFile &write(const QList<QByteArray> &rows)
    {
        QByteArray text = start;
        for (const QByteArray &row : rows)
            text += lineOf(row) + '\n';
        return writeRaw(text);
    }
    RecordingFile &writeRaw(const QByteArray &text)
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(text), text.size());
        return *this;
    }
    [[nodiscard]] Recording read(Recording::Limits limits = {}) const
    {
        return Recording::read(path(), limits);
    }

private:
    static QByteArray lineOf(const QByteArray &row)
    {
        static const QRegularExpression pattern(
            u"^(\\d+(?:\\.\\d+)?) (IEEE 488|\\S+) ([<>+@]) (.*)$"_s,
            QRegularExpression::DotMatchesEverythingOption);
        const auto match = pattern.match(QString::fromLatin1(row));
        if (!match.hasMatch())
            return row;
        QJsonObject line{{u"time"_s, qRound64(match.captured(1).toDouble() * 1000)},
                         {u"channel"_s, match.captured(2)}};
        const QString kind = match.captured(3);
        const bool data = kind == u"<" || kind == u">";
        line.insert(u"event"_s, data ? u"data"_s : kind == u"+" ? u"connected"_s : u"addressed"_s);
        line.insert(data ? u"bytes"_s : u"text"_s, match.captured(4));
        if (data)
            line.insert(u"direction"_s, kind == u">" ? u"sent"_s : u"received"_s);
        return QJsonDocument(line).toJson(QJsonDocument::Compact);
    }

    QTemporaryDir m_folder;
};

} // namespace corvane::bench
