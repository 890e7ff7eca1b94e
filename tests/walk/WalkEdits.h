// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/FrameworkRef.h"

#include <rvkpcore/RvKpApplication.h>

#include <QString>

#include <random>
#include <string>
#include <vector>

/// The media files that a walk's tracks are made of.
struct WalkMedia
{
    std::vector<std::string> videos;
    std::vector<std::string> pictures;
    std::vector<std::string> sounds;
};

/// Makes random edits on a live timeline, of every sort that an editor makes.
class WalkEdits
{
public:
    using Random = std::mt19937_64;

    enum class Scope {
        /// Only edits that an undo takes back whole.
        Restorable,
        /// Also those of which it leaves something behind.
        All,
    };

    WalkEdits(qrvkp::RvKpApplication& application, const WalkMedia& media, Scope scope,
              Random& random);

    /// Makes one edit; gives its name.
    std::string makeEdit();

private:
    using Edit = bool (WalkEdits::*)();
    struct NamedEdit
    {
        const char* name;
        Edit edit;
        Scope scope;
    };
    static const std::vector<NamedEdit>& edits();

    // The main line. An edit is false when there was nothing to make it on.
    bool insertClip();
    bool splitClip();
    bool trimClip();
    bool moveClip();
    bool deleteClip();
    bool replaceClip();
    bool placeClip();
    bool restyleClip();
    bool insertEffectGroup();
    bool insertEmptyGroup();
    bool addGuestTrack();

    // The mix tracks.
    bool addOverlay();
    bool placeOverlay();
    bool addSound();
    bool trimSound();
    bool addDetection();
    bool bindDetection();
    bool addFilter();
    bool changeFilter();
    bool addBeauty();
    bool changeBeauty();
    bool paintMask();
    bool addMakeup();
    bool changeMakeup();
    bool addLiquify();
    bool pushPixels();
    bool restyleMix();
    bool bindEffect();
    bool deleteMixTrack();
    /// Whether an undo takes back that the track is bound to something else or deleted: that a
    /// track was bound to one that is away is not brought back.
    bool isRestorable(qrvkp::RvITrack* track) const;
    bool addUndescribed();
    bool addMatte();
    bool addLayer();
    bool changeLayer();
    bool addLabel();
    bool addParameters();
    bool fadeFilter();
    bool bindEffectToDetection();
    bool bindEffectToMixTrack();
    bool renameTrack();

    bool resizeCanvas();

    int number(int below);
    float fraction() { return static_cast<float>(number(101)) / 100.0F; }
    const std::string& oneOf(const std::vector<std::string>& values);
    FrameworkRef<qrvkp::RvKpTimeLine> timeline() const;
    /// A random group whose first track is a picture or a video; null when there is none.
    FrameworkRef<qrvkp::RvKpGroup> someClip(int* position = nullptr);
    FrameworkRef<qrvkp::RvITrack> firstTrack(const qrvkp::RvKpGroup& group) const;
    FrameworkRef<qrvkp::RvITrack> newClipTrack();
    bool insertTrack(FrameworkRef<qrvkp::RvITrack> track, int position, long long duration);
    bool addMix(qrvkp::RvITrack* track);
    /// A random mix track of a class; null when there is none.
    template <class Track>
    FrameworkRef<Track> someMix();
    void placeMedia(qrvkp::RvITrack& track);
    void restyle(qrvkp::RvITrack& track);
    std::string text(const char* prefix);

    qrvkp::RvKpApplication& m_application;
    const WalkMedia& m_media;
    const Scope m_scope;
    Random& m_random;
};
