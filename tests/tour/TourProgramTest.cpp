// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/TestMedia.h"
#include "tour/TourEdits.h"
#include "tour/TourProgramFixture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace {

/// One line of complaint with this text in it, nothing else said, and exit code 2.
void expectComplaint(const TourRun& run, const std::string& text)
{
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.complaint.compare(0, 13, "norvel-tour: "), 0) << run.complaint;
    EXPECT_NE(run.complaint.find(text), std::string::npos) << run.complaint;
    EXPECT_EQ(std::count(run.complaint.begin(), run.complaint.end(), '\n'), 1) << run.complaint;
}

/// A document without what may differ between two captures of one timeline: the order of the mix
/// tracks and the folders of their strokes.
QJsonObject comparable(QJsonObject json)
{
    std::map<QString, QJsonObject> tracks;
    for (const QJsonValue& value : json.value("mixAttribs").toArray()) {
        QJsonObject track = value.toObject();
        track.remove("effectPath");
        tracks.emplace(track.value("uuid").toString(), track);
    }
    QJsonArray sorted;
    for (const auto& [uuid, track] : tracks)
        sorted.append(track);
    json.insert("mixAttribs", sorted);
    return json;
}

std::set<std::string> sources(const QJsonObject& json)
{
    std::set<std::string> found;
    for (const char* list : {"mainAttribs", "mixAttribs"}) {
        for (const QJsonValue& value : json.value(list).toArray())
            found.insert(value.toObject().value("source").toString().toStdString());
    }
    return found;
}

/// Makes files of all kinds with blanks and Chinese characters in their names; gives their paths in
/// the folder.
QStringList makeOwnFiles(const QString& folder)
{
    const QTemporaryDir plain;
    const QStringList names{QStringLiteral("我的 视频.mp4"), QStringLiteral("一 张 照片.png"),
                            QStringLiteral("  声音 100%.wav")};
    TestMedia::copy(TestMedia::video(plain.path(), "v.mp4", 64, 48, "25", 1), folder, names[0]);
    TestMedia::copy(TestMedia::picture(plain.path(), "p.png", 30, 20), folder, names[1]);
    TestMedia::copy(TestMedia::sound(plain.path(), "s.wav", 1), folder, names[2]);
    return {"./" + names[0], "./" + names[1], "./" + names[2]};
}

/// An environment without any program.
QProcessEnvironment withoutPrograms(const QString& folder)
{
    QProcessEnvironment environment = TourRun::environmentOfTest();
    environment.insert("PATH", folder);
    return environment;
}

} // namespace

TEST_F(TourProgramTest, AgreesInEveryStepWithItsOwnFiles)
{
    const TourRun run = TourRun::ofProgram({});
    expectAgreement(run);
    // All edits, all undone, all redone, half of them undone, others in their place, and all again.
    const int edits = static_cast<int>(tourEdits().size());
    const int branch = static_cast<int>(branchEdits().size());
    EXPECT_EQ(run.count("edit"), edits + branch);
    EXPECT_EQ(run.count("undo"), edits + (edits - edits / 2) + (edits / 2 + branch));
    EXPECT_EQ(run.count("redo"), edits + (edits / 2 + branch));
    EXPECT_EQ(run.summary().find(std::to_string(run.lines().size()) + " steps"), 0U)
        << run.summary();
}

TEST_F(TourProgramTest, PrintsAlignedNumberedLines)
{
    const TourRun run = TourRun::ofProgram({});
    const std::vector<TourLine> lines = run.lines();
    int number = 0;
    int calls = 0;
    for (const TourLine& line : lines) {
        EXPECT_EQ(line.number, ++number);
        EXPECT_EQ(line.resultColumn, lines.front().resultColumn) << line.edit;
        EXPECT_GT(line.calls, 0) << line.edit;
        EXPECT_TRUE(line.below.empty()) << line.edit;
        calls += line.calls;
    }
    EXPECT_NE(run.summary().find("; " + std::to_string(calls) + " framework calls in "),
              std::string::npos)
        << run.summary();
}

TEST_F(TourProgramTest, LeavesNothingInTheFolderOfTemporaryFiles)
{
    QProcessEnvironment environment = TourRun::environmentOfTest();
    const QTemporaryDir runtime; // where Qt would make one in the temporary folder
    environment.insert("XDG_RUNTIME_DIR", runtime.path());
    for (const char* name : {"TMPDIR", "TMP", "TEMP"})
        environment.insert(name, m_folder.path());
    expectAgreement(TourRun::ofProgram({}, environment));
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList());
}

TEST_F(TourProgramTest, WritesAJsonDocumentForEveryStep)
{
    const QString folder = path("new/docs");
    const TourRun run = TourRun::ofProgram({"--json", folder});
    expectAgreement(run);
    EXPECT_EQ(static_cast<std::size_t>(QDir(folder).entryList(QDir::Files).size()),
              run.lines().size());
    for (const TourLine& line : run.lines()) {
        const QJsonObject json = document(folder, line.number);
        EXPECT_EQ(json.keys(), (QStringList{"height", "mainAttribs", "mixAttribs", "width"}));
        EXPECT_FALSE(json.value("mainAttribs").toArray().isEmpty());
        EXPECT_TRUE(json.value("width").isDouble());
    }
}

TEST_F(TourProgramTest, WritesTheSameDocumentForTheSameEntryOfTheHistory)
{
    const QString folder = path("docs");
    const TourRun run = TourRun::ofProgram({"--json", folder});
    const std::vector<TourLine> lines = run.lines();
    const int edits = static_cast<int>(
        std::find_if(lines.begin(), lines.end(), [](auto& l) { return l.phase != "edit"; }) -
        lines.begin());
    ASSERT_GE(edits, 20);
    for (int entry = 1; entry < edits; ++entry) {
        const QJsonObject edited = comparable(document(folder, entry));
        const QJsonObject undone = comparable(document(folder, 2 * edits - entry));
        const QJsonObject redone = comparable(document(folder, 2 * edits + entry));
        EXPECT_EQ(undone, edited) << entry;
        EXPECT_EQ(redone, edited) << entry;
    }
    EXPECT_NE(comparable(document(folder, 1)), comparable(document(folder, edits)));
}

TEST_F(TourProgramTest, PrintsTheCallsOfEveryStep)
{
    const TourRun run = TourRun::ofProgram({"--calls"});
    EXPECT_EQ(run.exitCode, 0);
    const std::vector<TourLine> lines = run.lines();
    for (const TourLine& line : lines) {
        EXPECT_EQ(line.below.size(), static_cast<std::size_t>(line.calls)) << line.edit;
        // Edit and reconciliation alike change nothing while a frame is rendered.
        EXPECT_EQ(line.below.front(), "RvKpPlayer::lockPlayer()");
        EXPECT_EQ(line.below.back(), "RvKpPlayer::unlockPlayer()");
    }
    ASSERT_FALSE(lines.empty());
    const std::vector<std::string>& first = lines.front().below;
    EXPECT_TRUE(std::any_of(first.begin(), first.end(), [](const std::string& call) {
        return call.find("RvKpTimeLine::insertGroup(") == 0;
    }));
}

TEST_F(TourProgramTest, TakesFilesWithBlanksAndChineseNames)
{
    const QStringList files = makeOwnFiles(m_folder.path());
    const QTemporaryDir documents;
    const TourRun run =
        TourRun::inFolder(m_folder.path(), files + QStringList{"--json", documents.path()});
    expectAgreement(run);
    for (const char* line : {"video    ./我的 视频.mp4\n", "picture  ./一 张 照片.png\n",
                             "sound    ./  声音 100%.wav\n"})
        EXPECT_NE(run.output.find(line), std::string::npos) << run.output;
    for (const char* made : {"sounding.mp4", "silent.mp4", "picture.png", "sound.wav"})
        EXPECT_EQ(run.output.find(made), std::string::npos) << made;
    EXPECT_EQ(document(documents.path(), 1).size(), 4);
}

TEST_F(TourProgramTest, TakesFilesUnderEveryLocale)
{
    const QStringList files = makeOwnFiles(m_folder.path());
    for (const char* locale : {"C", "C.UTF-8"}) {
        QProcessEnvironment environment = TourRun::environmentOfTest();
        environment.insert("LC_ALL", locale);
        expectAgreement(TourRun::inFolder(m_folder.path(), files, environment));
    }
}

TEST_F(TourProgramTest, WritesDocumentsToAChineseFolderUnderEveryLocale)
{
    for (const char* locale : {"C", "C.UTF-8"}) {
        QProcessEnvironment environment = TourRun::environmentOfTest();
        environment.insert("LC_ALL", locale);
        const TourRun run = TourRun::inFolder(m_folder.path(),
                                              {"--json", QStringLiteral("文档/步骤")}, environment);
        expectAgreement(run);
        const auto folder = std::filesystem::u8path(m_folder.path().toStdString()) /
                            std::filesystem::u8path("文档/步骤");
        EXPECT_TRUE(std::filesystem::exists(folder / "step-001.json")) << locale;
        std::filesystem::remove_all(folder);
    }
}

TEST_F(TourProgramTest, MakesWhatIsMissingAmongTheFiles)
{
    const QString picture =
        QString::fromStdString(TestMedia::picture(m_folder.path(), "p.png", 30, 20));
    const TourRun run = TourRun::ofProgram({picture});
    expectAgreement(run);
    EXPECT_NE(run.output.find("picture  " + picture.toStdString() + "\nsound "), std::string::npos);
    EXPECT_EQ(run.output.find("picture.png"), std::string::npos);
    for (const char* name : {"sounding.mp4\n", "silent.mp4\n", "sound.wav\n"})
        EXPECT_NE(run.output.find(name), std::string::npos) << name;
}

TEST_F(TourProgramTest, PutsEveryFileOnTheTimeline)
{
    QStringList files;
    for (const char* name : {"1.mp4", "2.mp4", "3.mp4", "4.mp4"})
        files << QString::fromStdString(
            TestMedia::video(m_folder.path(), name, 32, 24, "25", 0.5, false));
    for (const char* name : {"1.png", "2.png"})
        files << QString::fromStdString(TestMedia::picture(m_folder.path(), name, 8, 8));
    for (const char* name : {"1.wav", "2.wav"})
        files << QString::fromStdString(TestMedia::sound(m_folder.path(), name, 0.5));
    const TourRun run = TourRun::ofProgram(QStringList{"--json", path("docs")} + files);
    expectAgreement(run);
    std::set<std::string> edited;
    for (const TourLine& line : run.lines())
        edited.merge(sources(document(path("docs"), line.number)));
    for (const QString& file : files)
        EXPECT_EQ(edited.count(file.toStdString()), 1U) << file.toStdString();
}

TEST_F(TourProgramTest, NeedsNoFfmpegForFilesOfAllKinds)
{
    const QStringList files = makeOwnFiles(m_folder.path());
    const QTemporaryDir empty;
    expectAgreement(TourRun::inFolder(m_folder.path(), files, withoutPrograms(empty.path())));
}

TEST_F(TourProgramTest, ComplainsWhenThereIsNoFfmpeg)
{
    expectComplaint(TourRun::ofProgram({}, withoutPrograms(m_folder.path())),
                    "ffmpeg cannot be started");
}

TEST_F(TourProgramTest, ComplainsWhenFfmpegFails)
{
    expectComplaint(TourRun::ofProgram({}, withoutPrograms(NORVEL_FAILING_FFMPEG_FOLDER)),
                    "cannot make sounding.mp4: ffmpeg fails: no codec\n");
}

TEST_F(TourProgramTest, ComplainsOfAMissingFile)
{
    const QString good = QString::fromStdString(TestMedia::picture(m_folder.path(), "p.png", 8, 8));
    const QString missing = path("not here.mp4");
    expectComplaint(TourRun::ofProgram({good, missing, "--json", path("docs")}),
                    "no such file: " + missing.toStdString() + "\n");
    EXPECT_FALSE(QFile::exists(path("docs"))) << "something was begun";
}

TEST_F(TourProgramTest, ComplainsOfABrokenFile)
{
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise.append(static_cast<char>((i * 7919) >> 3));
    std::vector<const char*> names{"broken.png"};
#ifdef NORVEL_ENGINE_READS_CONTENT
    names.push_back("broken.mp4");
    names.push_back("broken.wav");
#endif
    for (const char* name : names) {
        const std::string broken = TestMedia::file(m_folder.path(), name, noise);
        expectComplaint(
            TourRun::ofProgram({QString::fromStdString(broken), "--json", path("docs")}), broken);
        EXPECT_FALSE(QFile::exists(path("docs"))) << "something was begun";
    }
}

TEST_F(TourProgramTest, ComplainsOfAFolderInPlaceOfAFile)
{
    expectComplaint(TourRun::ofProgram({m_folder.path()}), m_folder.path().toStdString());
}

TEST_F(TourProgramTest, ComplainsOnOneLineWhateverTheName)
{
    expectComplaint(TourRun::ofProgram({path("two\nlines.mp4")}), "two lines.mp4");
}

TEST_F(TourProgramTest, ComplainsOfBadOptions)
{
    expectComplaint(TourRun::ofProgram({"--fast"}), "'fast'");
    expectComplaint(TourRun::ofProgram({"--json"}), "--json");
}

TEST_F(TourProgramTest, ComplainsOfAFileInPlaceOfTheJsonFolder)
{
    const std::string file = TestMedia::file(m_folder.path(), "docs", "mine");
    expectComplaint(TourRun::ofProgram({"--json", path("docs")}),
                    "cannot make the folder: " + file + "\n");
    expectComplaint(TourRun::ofProgram({"--json", path("docs/below")}), path("docs").toStdString());
    EXPECT_EQ(TestMedia::content(file), "mine");
}

TEST_F(TourProgramTest, ComplainsWhenDocumentsCannotBeWritten)
{
    QDir().mkpath(path("docs/step-001.json"));
    expectComplaint(TourRun::ofProgram({"--json", path("docs")}), "step-001.json");
}

TEST_F(TourProgramTest, EndsWhenADocumentCannotBeWritten)
{
    QDir().mkpath(path("docs/step-007.json"));
    const TourRun run = TourRun::ofProgram({"--json", path("docs")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.lines().size(), 7U);
    EXPECT_EQ(run.complaint,
              "norvel-tour: cannot write: " + path("docs/step-007.json").toStdString() + "\n");
}

TEST_F(TourProgramTest, WritesOverTheDocumentsOfAnEarlierTour)
{
    QDir().mkpath(path("docs"));
    TestMedia::file(path("docs"), "step-001.json", QByteArray(1 << 20, 'x'));
    EXPECT_EQ(TourRun::ofProgram({"--json", path("docs")}).exitCode, 0);
    EXPECT_EQ(document(path("docs"), 1).size(), 4);
}

TEST_F(TourProgramTest, TellsItsHelp)
{
    const TourRun run = TourRun::ofProgram({"--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.output.find("Exit code: 0"), std::string::npos);
    EXPECT_EQ(run.complaint, "");
}
