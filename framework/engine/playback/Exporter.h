// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>

#include <QSize>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace rvengine {

struct ExportSettings
{
    QSize size;              ///< px; a side of 0 is that of the canvas
    double frameRate = 30.0; ///< pictures a second
    int videoBitRate = 0;    ///< bits a second; 0 leaves it to the encoder
    int audioBitRate = 0;    ///< bits a second; 0 leaves it to the encoder
};

enum class ExportState {
    Running,
    Finished,
    Cancelled,
    Failed,
};

struct ExportNews
{
    ExportState state = ExportState::Running;
    double share = 0.0; ///< how much is done, 0 to 1
    /// How long the rest will take, as far as what is done tells; negative before that.
    std::chrono::milliseconds remaining{-1};
    QString error; ///< why it failed
};

/// An export that goes on in threads of its own. Destroying it ends it.
class Exporter
{
public:
    virtual ~Exporter() = default;

    /// Ends the export soon. What was written so far stays and can be played, unless a file stood
    /// in its place: that one stays then.
    virtual void cancel() = 0;
    /// How it is. Any thread may ask.
    virtual ExportNews news() = 0;
    virtual const std::string& path() const = 0;
};

/// Begins to write the whole scene to the file `path` (UTF-8), whose extension tells the format.
/// `told` is called in any thread when there is something new, and not again before that was asked
/// for. A file that stands there stays until the export is finished, and where it fails. Null when
/// this build's engine cannot export; whatever else goes wrong makes an exporter that has failed.
std::unique_ptr<Exporter> startExport(ScenePointer scene, const std::string& path,
                                      const ExportSettings& settings, std::function<void()> told);

} // namespace rvengine
