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
    QAudioEncoderSettings settings = wanted;
    settings.setBitRate(-1);
    settings.setCodec(nameBeginning(offeredCodecs, QStringLiteral("audio/amr-wb")));
    if (settings.codec().isEmpty()) {
        settings.setCodec(nameBeginning(offeredCodecs, QStringLiteral("audio/amr")));
        if (!settings.codec().isEmpty())
            settings.setSampleRate(8000);
    }
    return settings;
}
