// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FilmWriter.h"

#include <engine/base/SoundFormat.h>

#include "Encoder.h"
#include "FfmpegErrors.h"
#include "FfmpegLog.h"
#include "FilmFile.h"
#include "LocalFile.h"
#include "PictureConverter.h"
#include "SoundEncoder.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>
#include <thread>
#include <utility>

namespace rvengine {

namespace {

/// H.264 in formats where every player expects it.
bool isForH264(const AVOutputFormat& format)
{
    const QString name = QString::fromLatin1(format.name);
    return name == QLatin1String("mp4") || name == QLatin1String("mov") ||
           name == QLatin1String("matroska") || name == QLatin1String("ipod") ||
           name == QLatin1String("flv") || name == QLatin1String("mpegts");
}

bool isMatroska(const AVOutputFormat& format)
{
    const QString name = QString::fromLatin1(format.name);
    return name == QLatin1String("matroska") || name == QLatin1String("webm");
}

std::vector<const AVCodec*> videoEncoders(const AVOutputFormat& format)
{
    std::vector<const AVCodec*> encoders;
    const auto add = [&](const AVCodec* encoder) {
        if (encoder && std::find(encoders.begin(), encoders.end(), encoder) == encoders.end())
            encoders.push_back(encoder);
    };
    if (isForH264(format)) {
        for (const char* name : {"libx264", "h264_mf", "libopenh264", "mpeg4"})
            add(Encoder::find(format, {name}, AV_CODEC_ID_NONE));
    }
    add(Encoder::find(format, {}, format.video_codec));
    return encoders;
}

AVPixelFormat pixelFormatOf(const AVCodec& encoder)
{
    const AVPixelFormat* const offered = encoder.pix_fmts;
    if (!offered)
        return AV_PIX_FMT_YUV420P;
    for (const AVPixelFormat* format = offered; *format != AV_PIX_FMT_NONE; ++format) {
        if (*format == AV_PIX_FMT_YUV420P)
            return *format;
    }
    return offered[0];
}

/// Options of single encoders; others do not know them.
void setOptions(AVCodecContext& codec, bool hasBitRate)
{
    void* const options = codec.priv_data;
    const QString name = QString::fromLatin1(codec.codec->name);
    if (name == QLatin1String("libx264")) {
        av_opt_set(options, "preset", "veryfast", 0);
    } else if (name == QLatin1String("libvpx-vp9") || name == QLatin1String("libvpx")) {
        av_opt_set(options, "deadline", "realtime", 0);
        av_opt_set_int(options, "cpu-used", 6, 0);
        av_opt_set_int(options, "row-mt", 1, 0);
        if (!hasBitRate)
            av_opt_set_int(options, "crf", 30, 0);
    } else if (!hasBitRate && codec.codec_id == AV_CODEC_ID_MPEG4) {
        codec.flags |= AV_CODEC_FLAG_QSCALE;
        codec.global_quality = 3 * FF_QP2LAMBDA;
    }
}

void setUp(AVCodecContext& codec, const FilmFormat& format)
{
    codec.width = format.size.width();
    codec.height = format.size.height();
    codec.pix_fmt = pixelFormatOf(*codec.codec);
    codec.framerate = {format.rate.numerator, format.rate.denominator};
    codec.time_base = av_inv_q(codec.framerate);
    codec.sample_aspect_ratio = {1, 1};
    codec.colorspace = AVCOL_SPC_BT709;
    codec.color_primaries = AVCOL_PRI_BT709;
    codec.color_trc = AVCOL_TRC_BT709;
    codec.color_range = AVCOL_RANGE_MPEG;
    codec.chroma_sample_location = AVCHROMA_LOC_LEFT;
    codec.thread_count = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
    if (format.videoBitRate > 0)
        codec.bit_rate = format.videoBitRate;
    else if (codec.codec_id == AV_CODEC_ID_VP9 || codec.codec_id == AV_CODEC_ID_VP8)
        codec.bit_rate = 0;
    setOptions(codec, format.videoBitRate > 0);
}

} // namespace

class FilmWriter::Prepared
{
public:
    FramePointer frame;
};

struct FilmWriter::Output
{
    explicit Output(const std::string& path)
        : file(fileNameOf(path))
    {
    }

    bool fail(int result, const FfmpegErrors& errors, QString& error) const
    {
        if (result < 0)
            error = errors.textOf(result);
        return result >= 0;
    }

    int open(const std::string& path, const FilmFormat& format)
    {
        AVFormatContext* context = nullptr;
        const int result = avformat_alloc_output_context2(&context, nullptr, nullptr, path.c_str());
        muxer.reset(context);
        if (result < 0)
            return result;
        file.attach(*muxer);
        // Else it would move the pictures for the silence that a codec of sound begins with.
        if (isMatroska(*muxer->oformat))
            muxer->avoid_negative_ts = AVFMT_AVOID_NEG_TS_DISABLED;
        int started = startVideo(format);
        if (started >= 0)
            started = startSound(format);
        return started < 0 ? started : writeHeader();
    }

    /// With the first encoder that can be opened.
    int startVideo(const FilmFormat& format)
    {
        int result = AVERROR_ENCODER_NOT_FOUND;
        for (const AVCodec* encoder : videoEncoders(*muxer->oformat)) {
            auto tried = std::make_unique<Encoder>(encoder);
            setUp(tried->codec(), format);
            result = tried->start(*muxer);
            if (result >= 0) {
                video = std::move(tried);
                return result;
            }
        }
        return result;
    }

    int startSound(const FilmFormat& format)
    {
        const AVCodec* const encoder =
            Encoder::find(*muxer->oformat, {"aac"}, muxer->oformat->audio_codec);
        if (!encoder)
            return 0;
        sound = std::make_unique<SoundEncoder>(encoder, format.audioBitRate);
        // Only that of Opus can be told to Matroska.
        if (isMatroska(*muxer->oformat) && encoder->id == AV_CODEC_ID_AAC)
            sound->leaveOutLeadIn();
        return sound->start(*muxer);
    }

    int writeHeader()
    {
        AVDictionary* options = nullptr;
        av_dict_set(&options, "movflags", "+faststart", 0);
        const int result = avformat_write_header(muxer.get(), &options);
        av_dict_free(&options);
        return result;
    }

    int end()
    {
        int result = video->encode(*muxer, nullptr);
        if (result >= 0 && sound)
            result = sound->finish(*muxer);
        const int trailer = av_write_trailer(muxer.get());
        return result < 0 ? result : trailer;
    }

    FilmFile file;
    OutputPointer muxer;
    std::unique_ptr<Encoder> video;
    std::unique_ptr<SoundEncoder> sound; ///< null where the format has none
    PictureConverter converter;
    long long pictures = 0;
};

bool isFilmName(const std::string& path)
{
    const AVOutputFormat* const format = av_guess_format(nullptr, path.c_str(), nullptr);
    if (!format || (format->flags & AVFMT_NOFILE) != 0)
        return false;
    // Those of sound take a PNG for a cover.
    return format->video_codec != AV_CODEC_ID_NONE && format->video_codec != AV_CODEC_ID_PNG;
}

std::unique_ptr<FilmWriter> FilmWriter::open(const std::string& path, const FilmFormat& format,
                                             QString& error)
{
    redirectFfmpegLog();
    const FfmpegErrors errors;
    auto output = std::make_unique<Output>(path);
    if (!output->file.open(error) || !output->fail(output->open(path, format), errors, error))
        return nullptr;
    return std::unique_ptr<FilmWriter>(new FilmWriter(std::move(output)));
}

FilmWriter::FilmWriter(std::unique_ptr<Output> output)
    : m_output(std::move(output))
{
}

FilmWriter::~FilmWriter() = default;

std::shared_ptr<FilmWriter::Prepared> FilmWriter::prepare(const QImage& picture)
{
    const AVCodecContext& codec = m_output->video->codec();
    auto prepared = std::make_shared<Prepared>();
    prepared->frame.reset(av_frame_alloc());
    AVFrame* const frame = prepared->frame.get();
    if (!frame)
        return nullptr;
    frame->width = codec.width;
    frame->height = codec.height;
    frame->format = codec.pix_fmt;
    frame->colorspace = codec.colorspace;
    frame->color_primaries = codec.color_primaries;
    frame->color_trc = codec.color_trc;
    frame->color_range = codec.color_range;
    frame->chroma_location = codec.chroma_sample_location;
    if (av_frame_get_buffer(frame, 0) < 0 || !m_output->converter.toFrame(picture, *frame))
        return nullptr;
    return prepared;
}

bool FilmWriter::addPicture(const Prepared& picture, QString& error)
{
    const FfmpegErrors errors;
    picture.frame->pts = m_output->pictures++;
    return m_output->fail(m_output->video->encode(*m_output->muxer, picture.frame.get()), errors,
                          error);
}

bool FilmWriter::addSound(const std::vector<float>& samples, QString& error)
{
    const FfmpegErrors errors;
    return !m_output->sound ||
           m_output->fail(m_output->sound->add(*m_output->muxer, samples), errors, error);
}

bool FilmWriter::finish(QString& error)
{
    const FfmpegErrors errors;
    return m_output->fail(m_output->end(), errors, error) && m_output->file.putInPlace(error);
}

bool FilmWriter::finishUnlessThere(QString& error)
{
    return m_output->file.isPlaceTaken() || finish(error);
}

} // namespace rvengine
