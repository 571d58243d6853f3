// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Recording.h"

#include "app/CommandLine.h"
#include "app/RunOutputs.h"
#include "core/text/PrintableText.h"
#include "devices/Literals.h"
#include "devices/PlatformError.h"

#include <QTextStream>

namespace corvane {

std::unique_ptr<TrafficWriter> startRecording(const CommandLine &line, TrafficRecorder &recorder,
                                              QTextStream &out, QTextStream &messages)
{
    if (line.recordFile.isEmpty())
        return nullptr;
    if (const QString refusal = RunOutputs(line, out).refusal(); !refusal.isEmpty())
        throw PlatformError(refusal);
    auto recording = std::make_unique<TrafficWriter>(recorder, line.recordFile);
    QObject::connect(recording.get(), &TrafficWriter::failed, [&messages](const QString &fault) {
        messages << "corvane: " << printableText::message(fault) << Qt::endl;
    });
    return recording;
}

bool finishRecording(TrafficWriter *recording)
{
    return recording == nullptr || recording->finish().isEmpty();
}

} // namespace corvane
