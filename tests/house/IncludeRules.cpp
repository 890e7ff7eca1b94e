// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "house/IncludeRules.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

bool startsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool startsWithAny(const std::string& text, const Names& prefixes)
{
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [&](const std::string& prefix) { return startsWith(text, prefix); });
}

bool contains(const Names& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// What the sources of a room may include.
struct Room
{
    /// Of the house and of other libraries: beginnings of names. Standard headers stand in no list.
    Names names;
    /// Modules of Qt; empty for all of them.
    Names qtModules;
};

const Names framework{"rvkpcore/", "kparextension/"};
const Names recordQtModules{"QtCore", "QtGui"};

Names with(Names names, const Names& further)
{
    names.insert(names.end(), further.begin(), further.end());
    return names;
}

/// A room of widgets: it knows itself, wherever it stands, and what the rooms share.
Room widgetsRoom(const std::string& source)
{
    const std::string folder = "norvel/widgets/";
    const auto end = source.find('/', folder.size());
    return {with(framework, {"norvel/global.h", folder + "common/", source.substr(0, end) + "/"}),
            {}};
}

/// A room of the engine: it knows itself and those below it; the media room alone knows FFmpeg.
Room engineRoom(const std::string& source)
{
    const Names base{"engine/base/"};
    const Names scene = with(base, {"engine/scene/"});
    const Names media = with(scene, {"engine/media/"});
    const std::string folder = "framework/engine/";
    if (startsWith(source, folder + "base/"))
        return {base, {}};
    if (startsWith(source, folder + "scene/"))
        return {scene, {}};
    if (startsWith(source, folder + "media/"))
        return {with(media, {"libavcodec/", "libavfilter/", "libavformat/", "libavutil/",
                             "libswresample/", "libswscale/"}),
                {}};
    if (startsWith(source, folder + "compose/"))
        return {with(media, {"engine/compose/"}), {}};
    if (startsWith(source, folder + "sound/"))
        return {with(media, {"engine/sound/"}), {}};
    if (startsWith(source, folder + "playback/"))
        return {{"engine/"}, {}};
    return {}; // nothing stands beside the rooms
}

Room roomOf(const std::string& source)
{
    const Names values{"kparextension/KpARTypes.h", "kparextension/RvARFaceGroupData.h",
                       "kparextension/RvARLiquifyOperation.h",
                       "kparextension/RvARMakeupARGroupData.h"};
    const Names attribute{"norvel/global.h", "norvel/attribute/"};
    const Names timeline = with(with(attribute, {"norvel/timeline/"}), framework);
    if (startsWith(source, "norvel/attribute/"))
        return {with(attribute, values), recordQtModules};
    if (startsWith(source, "norvel/timeline/"))
        return {timeline, recordQtModules};
    if (startsWith(source, "norvel/trace/"))
        return {with(timeline, {"norvel/trace/"}), recordQtModules};
    if (startsWith(source, "norvel/widgets/"))
        return widgetsRoom(source);
    if (startsWith(source, "norvel/"))
        return {{"norvel/"}, recordQtModules};
    if (startsWith(source, "framework/rvkpcore/"))
        return {{"rvkpcore/", "engine/"}, {}};
    if (startsWith(source, "framework/kparextension/"))
        return {framework, {}};
    return engineRoom(source);
}

/// Whether a name of another folder, which is thus no standard header, is one the room may include.
bool isAllowed(const Room& room, const std::string& source, const std::string& target)
{
    const bool isPrivate = startsWithAny(target, {"rvkpcore/private/", "kparextension/private/"});
    if (isPrivate && startsWith(source, "norvel/"))
        return false;
    return startsWithAny(target, room.names);
}

std::string includeName(const std::string& source)
{
    const std::string folder = "framework/";
    return startsWith(source, folder) ? source.substr(folder.size()) : source;
}

} // namespace

IncludeRules::IncludeRules(fs::path root, fs::path qtHeaders, std::set<std::string> publicHeaders)
    : m_root(std::move(root))
    , m_qtHeaders(std::move(qtHeaders))
    , m_publicHeaders(std::move(publicHeaders))
{
}

std::vector<std::string> IncludeRules::sources() const
{
    std::vector<std::string> found;
    for (const char* house : {"norvel", "framework"}) {
        if (!fs::exists(m_root / house))
            continue;
        for (const auto& entry : fs::recursive_directory_iterator(m_root / house)) {
            const fs::path extension = entry.path().extension();
            if (extension == ".h" || extension == ".cpp")
                found.push_back(entry.path().lexically_relative(m_root).generic_string());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<Include> IncludeRules::includes(const std::string& source) const
{
    std::vector<Include> found;
    std::ifstream stream(m_root / source);
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        line.erase(0, line.find_first_not_of(" \t"));
        if (!startsWith(line, "#") || line.find("include") == std::string::npos)
            continue;
        const auto begin = line.find_first_of("<\"");
        if (begin == std::string::npos)
            continue;
        const bool quoted = line[begin] == '"';
        const auto end = line.find(quoted ? '"' : '>', begin + 1);
        const std::string written = line.substr(begin + 1, end - begin - 1);
        found.push_back({number, nameOf(source, written, quoted)});
    }
    return found;
}

std::string IncludeRules::nameOf(const std::string& source, const std::string& written,
                                 bool quoted) const
{
    const fs::path beside = (m_root / source).parent_path() / written;
    if (!quoted || !fs::exists(beside))
        return fs::path(written).lexically_normal().generic_string();
    return includeName(beside.lexically_normal().lexically_relative(m_root).generic_string());
}

std::string IncludeRules::qtModuleOf(const std::string& target) const
{
    const auto slash = target.find('/');
    if (slash != std::string::npos)
        return startsWith(target, "Qt") ? target.substr(0, slash) : std::string();
    if (!startsWith(target, "Q") && !startsWith(target, "q"))
        return {};
    for (const auto& module : fs::directory_iterator(m_qtHeaders)) {
        const std::string name = module.path().filename().string();
        if (startsWith(name, "Qt") && fs::exists(module.path() / target))
            return name;
    }
    return {};
}

std::string IncludeRules::complaint(const std::string& source, const std::string& target) const
{
    const Room room = roomOf(source);
    const std::string qtModule = qtModuleOf(target);
    if (!qtModule.empty()) {
        return room.qtModules.empty() || contains(room.qtModules, qtModule) ? "" : "of " + qtModule;
    }
    const auto slash = target.find('/');
    if (slash == std::string::npos || startsWith(target, "sys/"))
        return {};
    if (!isAllowed(room, source, target))
        return "of a room it may not know";
    const bool isGenerated = target.size() > 9 && target.substr(target.size() - 9) == "_export.h";
    if (m_publicHeaders.count(includeName(source)) != 0 && !isGenerated &&
        m_publicHeaders.count(target) == 0)
        return "that is not installed, into a public header";
    return {};
}

std::vector<std::string> IncludeRules::violations() const
{
    std::vector<std::string> lines;
    for (const std::string& source : sources()) {
        for (const Include& include : includes(source)) {
            const std::string why = complaint(source, include.target);
            if (!why.empty())
                lines.push_back(source + ":" + std::to_string(include.line) + " includes <" +
                                include.target + "> " + why);
        }
    }
    return lines;
}
