// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TestMedia.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QThread>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

constexpr int ProcessTimeoutMs = 300000;

/// Starts a program. Wine refuses that now and then, with an error of its own, when much goes on.
void start(QProcess& process, const QString& program, const QStringList& arguments)
{
    constexpr int mostTries = 10;
    constexpr int pauseMs = 200;
    for (int i = 0; i < mostTries; ++i) {
        process.start(program, arguments, QIODevice::ReadOnly);
        if (process.waitForStarted(ProcessTimeoutMs))
            return;
        QThread::msleep(pauseMs);
    }
}

/// Runs a program and gives what it printed; a failure of it is a test failure.
bool run(const QString& program, const QStringList& arguments, QByteArray* output = nullptr)
{
    QProcess process;
    start(process, program, arguments);
    const bool succeeded = process.waitForFinished(ProcessTimeoutMs) &&
                           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (output)
        *output = process.readAllStandardOutput();
    if (!succeeded) {
        ADD_FAILURE() << program.toStdString() << " " << arguments.join(' ').toStdString() << ": "
                      << process.errorString().toStdString() << "\n"
                      << process.readAllStandardError().toStdString();
    }
    return succeeded;
}

std::string encode(const QString& path, const QStringList& arguments)
{
    const QStringList common{"-v", "error", "-nostdin", "-y"};
    return run("ffmpeg", common + arguments + QStringList{path}) ? path.toStdString()
                                                                 : std::string();
}

QStringList lavfi(const QString& source)
{
    return {"-f", "lavfi", "-i", source};
}

constexpr int NumberBars = 16;

QString colorName(const QColor& color)
{
    return QString("0x%1@%2").arg(color.name().mid(1)).arg(color.alphaF());
}

QStringList plainTone(double seconds)
{
    return lavfi(QString("sine=duration=%1").arg(seconds));
}

QStringList card(int width, int height, const QString& frameRate)
{
    return lavfi(QString("testsrc=size=%1x%2:rate=%3").arg(width).arg(height).arg(frameRate));
}

} // namespace

std::string TestMedia::made(const QString& folder, const QString& name,
                            const QStringList& arguments)
{
    return encode(QDir(folder).filePath(name), arguments);
}

std::string TestMedia::video(const QString& folder, const QString& name, int width, int height,
                             const QString& frameRate, double seconds, bool withSound)
{
    QStringList arguments = card(width, height, frameRate);
    if (withSound)
        arguments += plainTone(seconds);
    arguments += {"-t", QString::number(seconds), "-pix_fmt", "yuv420p"};
    return encode(QDir(folder).filePath(name), arguments);
}

std::string TestMedia::numberedVideo(const QString& folder, const QString& name, int width,
                                     int height, const QString& frameRate, int frames,
                                     const QStringList& codec)
{
    // One px for each bar, enlarged without a transition.
    const QString bars = QString("color=black:s=%1x1:r=%2,format=gray,"
                                 "geq=lum='if(mod(floor(N/"
                                 "pow(2\\,X))\\,2)\\,255\\,0)',scale=%3:%4:flags=neighbor,setsar=1")
                             .arg(NumberBars)
                             .arg(frameRate)
                             .arg(width)
                             .arg(height);
    return encode(QDir(folder).filePath(name),
                  lavfi(bars) + QStringList{"-frames:v", QString::number(frames)} + codec);
}

int TestMedia::frameNumber(const QImage& picture, QRect area)
{
    constexpr int darkest = 64;
    constexpr int brightest = 192;
    int number = 0;
    for (int bar = 0; bar < NumberBars; ++bar) {
        const QPoint middle(area.x() + (2 * bar + 1) * area.width() / (2 * NumberBars),
                            area.center().y());
        const int gray = qGray(picture.pixel(middle));
        if (gray > darkest && gray < brightest)
            return -1;
        number |= (gray >= brightest ? 1 : 0) << bar;
    }
    return number;
}

std::string TestMedia::turnedVideo(const std::string& source, const QString& folder,
                                   const QString& name, int degrees)
{
    const std::string path =
        encode(QDir(folder).filePath(name), {"-i", QString::fromStdString(source), "-c", "copy",
                                             "-metadata:s:v:0", QString("rotate=%1").arg(degrees)});
    EXPECT_NE(streamEntry(path, "v", "width:stream_side_data=rotation").split(',').value(1), "")
        << path;
    return path;
}

std::string TestMedia::solidVideo(const QString& folder, const QString& name, int width, int height,
                                  const QColor& color, const StoredColors& stored, double seconds)
{
    const QString source =
        QString("color=c=%1:s=%2x%3:r=25:d=%4,format=rgba,"
                "scale=out_color_matrix=%5:out_range=%6:"
                "flags=accurate_rnd+full_chroma_int,format=%7")
            .arg(colorName(color))
            .arg(width)
            .arg(height)
            .arg(seconds)
            .arg(stored.matrix, stored.fullRange ? "pc" : "tv", stored.pixelFormat);
    const QString matrix = stored.matrix == "bt601" ? "smpte170m" : stored.matrix;
    return encode(QDir(folder).filePath(name),
                  lavfi(source) +
                      QStringList{"-colorspace", matrix, "-color_primaries", matrix, "-color_trc",
                                  matrix, "-color_range", stored.fullRange ? "pc" : "tv"} +
                      stored.codec);
}

std::string TestMedia::solidPicture(const QString& folder, const QString& name, int width,
                                    int height, const QColor& color)
{
    const QString path = QDir(folder).filePath(name);
    QImage picture(width, height, QImage::Format_ARGB32);
    picture.fill(color);
    if (!picture.save(path)) {
        ADD_FAILURE() << "cannot write " << path.toStdString();
        return {};
    }
    return path.toStdString();
}

std::string TestMedia::picture(const QString& folder, const QString& name, int width, int height)
{
    return encode(QDir(folder).filePath(name),
                  card(width, height, "25") + QStringList{"-frames:v", "1"});
}

std::string TestMedia::sound(const QString& folder, const QString& name, double seconds)
{
    return encode(QDir(folder).filePath(name), plainTone(seconds));
}

std::string TestMedia::tone(const QString& folder, const QString& name, double frequency,
                            double amplitude, double seconds, int channels, int rate)
{
    QStringList formulas;
    for (int channel = 0; channel < channels; ++channel)
        formulas += QString("%1*sin(2*PI*%2*t)").arg(amplitude).arg(frequency);
    return wave(folder, name, formulas, seconds, rate);
}

std::string TestMedia::wave(const QString& folder, const QString& name, const QStringList& channels,
                            double seconds, int rate)
{
    const QString source =
        QString("aevalsrc='%1':s=%2:d=%3").arg(channels.join('|')).arg(rate).arg(seconds);
    const QStringList codec =
        name.endsWith(".wav") ? QStringList{"-c:a", "pcm_f32le"} : QStringList();
    return encode(QDir(folder).filePath(name), lavfi(source) + codec);
}

std::string TestMedia::soundWithCover(const QString& folder, const QString& name, double seconds)
{
    const QStringList onePicture = lavfi("testsrc=size=200x200:rate=25:duration=0.04");
    const QStringList cover{"-map",           "0",           "-map",     "1",
                            "-c:v",           "mjpeg",       "-pix_fmt", "yuvj420p",
                            "-disposition:v", "attached_pic"};
    return encode(QDir(folder).filePath(name), plainTone(seconds) + onePicture + cover);
}

bool TestMedia::isFileName(const QString& name)
{
#ifdef Q_OS_WIN
    const QString forbidden = QStringLiteral("<>:\"/\\|?*");
#else
    const QString forbidden = QStringLiteral("/");
#endif
    return std::none_of(name.begin(), name.end(),
                        [&](QChar character) { return forbidden.contains(character); });
}

// Qt turns file names into bytes by the locale: plain streams make any name under every locale.
std::string TestMedia::file(const QString& folder, const QString& name, const QByteArray& content)
{
    // QDir takes a name that begins with a colon for the absolute path of a resource.
    const std::string path = (folder + '/' + name).toStdString();
    std::ofstream stream(std::filesystem::u8path(path), std::ios::binary | std::ios::trunc);
    stream.write(content.constData(), content.size());
    stream.close();
    if (!stream) {
        ADD_FAILURE() << "cannot write " << path;
        return {};
    }
    return path;
}

std::string TestMedia::copy(const std::string& source, const QString& folder, const QString& name)
{
    return file(folder, name, content(source));
}

std::string TestMedia::truncated(const std::string& source, const QString& folder,
                                 const QString& name, int size)
{
    const QByteArray whole = content(source);
    EXPECT_LT(size, whole.size()) << "nothing to cut off " << source;
    return file(folder, name, whole.left(size));
}

QByteArray TestMedia::content(const std::string& path)
{
    std::ifstream stream(std::filesystem::u8path(path), std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << "cannot read " << path;
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    return QByteArray::fromStdString(bytes);
}

double TestMedia::durationMs(const std::string& path)
{
    QByteArray seconds;
    run("ffprobe",
        {"-v", "error", "-show_entries", "format=duration", "-of", "csv=p=0",
         QString::fromStdString(path)},
        &seconds);
    bool isNumber = false;
    const double value = seconds.trimmed().toDouble(&isNumber);
    return isNumber ? value * 1000 : -1;
}

QString TestMedia::streamEntry(const std::string& path, const QString& type, const QString& entry)
{
    QByteArray value;
    QStringList arguments{"-v", "error"};
    if (entry.contains("nb_read_frames"))
        arguments << "-count_frames"; // decodes all of the file
    run("ffprobe",
        arguments + QStringList{"-select_streams", type + ":0", "-show_entries", "stream=" + entry,
                                "-of", "csv=p=0", QString::fromStdString(path)},
        &value);
    return QString::fromLatin1(value.trimmed());
}

std::vector<float> TestMedia::samples(const std::string& path, const QString& filter)
{
    QByteArray bytes;
    QStringList arguments{"-v", "error", "-nostdin", "-i", QString::fromStdString(path)};
    if (!filter.isEmpty())
        arguments += QStringList{"-af", filter};
    run("ffmpeg", arguments + QStringList{"-f", "f32le", "-ac", "2", "-ar", "48000", "-"}, &bytes);
    std::vector<float> values(static_cast<std::size_t>(bytes.size()) / sizeof(float));
    std::memcpy(values.data(), bytes.constData(), values.size() * sizeof(float));
    return values;
}

std::vector<DecodedPicture> TestMedia::pictures(const std::string& path, QSize size,
                                                const QString& filter, const QString& decoder)
{
    const QString file = QString::fromStdString(path);
    QByteArray stamps;
    run("ffprobe",
        {"-v", "fatal", "-select_streams", "v:0", "-show_entries",
         "frame=best_effort_timestamp_time", "-of", "default=noprint_wrappers=1:nokey=1", file},
        &stamps);
    const QString scale =
        QString("scale=%1:%2:flags=bilinear,format=bgra").arg(size.width()).arg(size.height());
    const QStringList wanted = decoder.isEmpty() ? QStringList() : QStringList{"-c:v", decoder};
    QByteArray bytes;
    run("ffmpeg",
        QStringList{"-v", "fatal", "-nostdin"} + wanted +
            QStringList{"-i", file, "-map", "0:v:0", "-fps_mode", "passthrough", "-vf",
                        filter.isEmpty() ? scale : filter + ',' + scale, "-f", "rawvideo", "-"},
        &bytes);
    std::vector<DecodedPicture> pictures;
    const int pictureBytes = size.width() * size.height() * 4;
    for (const QByteArray& stamp : stamps.trimmed().split('\n')) {
        const int at = static_cast<int>(pictures.size()) * pictureBytes;
        if (at + pictureBytes > bytes.size())
            break;
        const auto* const pixels = reinterpret_cast<const uchar*>(bytes.constData() + at);
        pictures.push_back({stamp.toDouble(), QImage(pixels, size.width(), size.height(),
                                                     size.width() * 4, QImage::Format_ARGB32)
                                                  .copy()});
    }
    EXPECT_EQ(static_cast<int>(pictures.size()) * pictureBytes, bytes.size()) << path;
    return pictures;
}
