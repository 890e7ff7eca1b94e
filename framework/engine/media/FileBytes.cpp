// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FileBytes.h"

#include "Ffmpeg.h"

#include <cstdio>

namespace rvengine {

int readFrom(QFile& file, std::uint8_t* to, int size)
{
    const qint64 count = file.read(reinterpret_cast<char*>(to), size);
    if (count < 0)
        return AVERROR(EIO);
    return count == 0 ? AVERROR_EOF : static_cast<int>(count);
}

std::int64_t seekIn(QFile& file, std::int64_t offset, int whence)
{
    if (whence == AVSEEK_SIZE)
        return file.size();
    const int origin = whence & ~AVSEEK_FORCE;
    if (origin == SEEK_CUR)
        offset += file.pos();
    else if (origin == SEEK_END)
        offset += file.size();
    return file.seek(offset) ? offset : AVERROR(EINVAL);
}

} // namespace rvengine
