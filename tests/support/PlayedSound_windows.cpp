// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/PlayedSound.h"

#include <QFile>

/// A file that grows by what is played, which another program records. The environment names it as
/// NORVEL_PLAYED_SOUND.
class PlayedSound::PlatformSource : public Source
{
public:
    testing::AssertionResult start() override
    {
        m_file.setFileName(qEnvironmentVariable("NORVEL_PLAYED_SOUND"));
        if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return testing::AssertionFailure()
                   << "NORVEL_PLAYED_SOUND: " << m_file.errorString().toStdString();
        // From now on, and from a whole frame on.
        m_file.seek(m_file.size() / 4 * 4);
        return testing::AssertionSuccess();
    }

    QByteArray read() override { return m_file.read(m_file.size() - m_file.pos()); }

private:
    QFile m_file;
};

std::unique_ptr<PlayedSound::Source> PlayedSound::makeSource()
{
    return std::make_unique<PlatformSource>();
}
