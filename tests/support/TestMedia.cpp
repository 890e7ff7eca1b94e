// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TestMedia.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QStringList>

#include <fstream>
#include <iterator>

namespace {

constexpr int ProcessTimeoutMs = 60000;

/// Runs a program and gives what it printed; a failure of it is a test failure.
bool run(const QString& program, const QStringList& arguments, QByteArray* output = nullptr)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
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

QStringList tone(double seconds)
{
    return lavfi(QString("sine=duration=%1").arg(seconds));
}

QStringList card(int width, int height, const QString& frameRate)
{
    return lavfi(QString("testsrc=size=%1x%2:rate=%3").arg(width).arg(height).arg(frameRate));
}

} // namespace

std::string TestMedia::video(const QString& folder, const QString& name, int width, int height,
                             const QString& frameRate, double seconds, bool withSound)
{
    QStringList arguments = card(width, height, frameRate);
    if (withSound)
        arguments += tone(seconds);
    arguments += {"-t", QString::number(seconds), "-pix_fmt", "yuv420p"};
    return encode(QDir(folder).filePath(name), arguments);
}

std::string TestMedia::picture(const QString& folder, const QString& name, int width, int height)
{
    return encode(QDir(folder).filePath(name),
                  card(width, height, "25") + QStringList{"-frames:v", "1"});
}

std::string TestMedia::sound(const QString& folder, const QString& name, double seconds)
{
    return encode(QDir(folder).filePath(name), tone(seconds));
}

std::string TestMedia::soundWithCover(const QString& folder, const QString& name, double seconds)
{
    const QStringList onePicture = lavfi("testsrc=size=200x200:rate=25:duration=0.04");
    const QStringList cover{"-map",           "0",           "-map",     "1",
                            "-c:v",           "mjpeg",       "-pix_fmt", "yuvj420p",
                            "-disposition:v", "attached_pic"};
    return encode(QDir(folder).filePath(name), tone(seconds) + onePicture + cover);
}

// Qt turns file names into bytes by the locale: plain streams make any name under every locale.
std::string TestMedia::file(const QString& folder, const QString& name, const QByteArray& content)
{
    const std::string path = QDir(folder).filePath(name).toStdString();
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
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
    std::ifstream stream(path, std::ios::binary);
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
