// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "walk/EditWalk.h"
#include "support/TestMedia.h"

#include <norvel/trace/RvEditorTrace.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

namespace {

/// Random walks with fixed seeds. By hand, `walk_test --seed=N --steps=M` makes one walk of each
/// sort; the environment variable NORVEL_WALKS says how many seeds there are, 20 if it does not.
class EditWalkTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_folder = std::make_unique<QTemporaryDir>();
        const QString folder = s_folder->path();
        s_media = std::make_unique<WalkMedia>();
        s_media->videos = {TestMedia::video(folder, "wide.mp4", 160, 90, "25", 2.0),
                           TestMedia::video(folder, "tall.mp4", 90, 160, "25", 3.0)};
        s_media->pictures = {TestMedia::picture(folder, "picture.png", 64, 48),
                             TestMedia::picture(folder, "photo.jpg", 100, 50)};
        s_media->sounds = {TestMedia::sound(folder, "tone.wav", 2.0)};
    }

    static void TearDownTestSuite()
    {
        s_media.reset();
        s_folder.reset();
    }

    static long long argument(const QString& name, long long fallback)
    {
        for (const QString& argument : QCoreApplication::arguments()) {
            if (argument.startsWith("--" + name + "="))
                return argument.section('=', 1).toLongLong();
        }
        return fallback;
    }

    static void walk(WalkEdits::Scope scope, std::uint64_t seed, int steps)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        EditWalk walk(seed, scope, *s_media);
        walk.run(steps);
    }

    static void walks(WalkEdits::Scope scope)
    {
        const long long seed = argument("seed", -1);
        if (seed >= 0)
            return walk(scope, static_cast<std::uint64_t>(seed),
                        static_cast<int>(argument("steps", 1000)));
        bool isSet = false;
        const int count = qEnvironmentVariableIntValue("NORVEL_WALKS", &isSet);
        const auto last = static_cast<std::uint64_t>(isSet ? count : 20);
        for (std::uint64_t fixed = 1; fixed <= last && !HasFailure(); ++fixed)
            walk(scope, fixed, 150);
    }

    static std::unique_ptr<QTemporaryDir> s_folder;
    static std::unique_ptr<WalkMedia> s_media;
};

std::unique_ptr<QTemporaryDir> EditWalkTest::s_folder;
std::unique_ptr<WalkMedia> EditWalkTest::s_media;

TEST_F(EditWalkTest, RestorableEditsAreTakenBackWhole)
{
    walks(WalkEdits::Scope::Restorable);
}

TEST_F(EditWalkTest, AllEditsAreTakenBackAsFarAsTheBridgeReaches)
{
    walks(WalkEdits::Scope::All);
}

} // namespace
