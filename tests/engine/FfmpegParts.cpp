// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FfmpegParts.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
}

#include <iostream>

bool ffmpegParts::has(const char* name)
{
    return !name || avcodec_find_decoder_by_name(name) || avfilter_get_by_name(name);
}

bool ffmpegParts::canEncode(const char* encoder)
{
    const AVCodec* const found = avcodec_find_encoder_by_name(encoder);
    AVCodecContext* codec = found ? avcodec_alloc_context3(found) : nullptr;
    if (!codec)
        return false;
    codec->width = 320;
    codec->height = 180;
    codec->pix_fmt = AV_PIX_FMT_YUV420P;
    codec->time_base = {1, 25};
    codec->framerate = {25, 1};
    const bool isOpen = avcodec_open2(codec, found, nullptr) >= 0;
    avcodec_free_context(&codec);
    return isOpen;
}

void ffmpegParts::printLeftOut(const char* suite, const char* test, const char* needed)
{
    std::cout << "Left out: " << suite << '/' << test << ": FFmpeg has no " << needed << std::endl;
}
