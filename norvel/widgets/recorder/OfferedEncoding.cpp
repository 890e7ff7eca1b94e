// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/OfferedEncoding.h>

#include <algorithm>

namespace {

/// The first of the names that begins so, in whatever case; empty when there is none.
QString nameBeginning(const QStringList& names, const QString& beginning)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const QString& name) {
        return name.startsWith(beginning, Qt::CaseInsensitive);
    });
    return found == names.end() ? QString() : *found;
}

} // namespace

QAudioEncoderSettings norvel::offeredEncoding(const QAudioEncoderSettings& wanted,
                                              const QStringList& offeredCodecs)
{
    if (offeredCodecs.contains(wanted.codec()))
        return wanted;
    const QString wideBand = nameBeginning(offeredCodecs, QStringLiteral("audio/amr-wb"));
    const QString amr = nameBeginning(offeredCodecs, QStringLiteral("audio/amr"));
    // The rest of what is wanted is no good to other codecs: Qt's backend for Windows divides by
    // it.
    if (amr.isEmpty())
        return {};
    QAudioEncoderSettings settings = wanted;
    settings.setBitRate(-1);
    settings.setCodec(wideBand.isEmpty() ? amr : wideBand);
    if (wideBand.isEmpty())
        settings.setSampleRate(8000);
    return settings;
}
