// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"

#include "support/ScopedCommaLocale.h"

#include <norvel/timeline/RvTimeLineAttribute.h>

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include <limits>
#include <type_traits>

namespace {

using namespace norvel;

const std::string emptyDocument = "{\n"
                                  "    \"height\": 0,\n"
                                  "    \"mainAttribs\": [\n"
                                  "    ],\n"
                                  "    \"mixAttribs\": [\n"
                                  "    ],\n"
                                  "    \"width\": 0\n"
                                  "}\n";

/// A record class of a host's own, that writes a text of its own.
struct HostRecord : RvAttribute
{
    explicit HostRecord(std::string ownText)
        : text(std::move(ownText))
    {
    }
    std::string serialization() const override { return text; }

    std::string text;
};

/// Tells when it is deleted.
struct WatchedRecord : RvAttribute
{
    WatchedRecord(std::string ownName, std::vector<std::string>& deletedNames)
        : name(std::move(ownName))
        , deleted(deletedNames)
    {
    }
    ~WatchedRecord() override { deleted.push_back(name); }

    std::string name;
    std::vector<std::string>& deleted;
};

/// A description whose main line holds one record of a host's with each text.
std::unique_ptr<RvTimeLineAttribute> descriptionOf(const std::vector<std::string>& texts)
{
    auto description = std::make_unique<RvTimeLineAttribute>();
    for (const std::string& text : texts)
        description->mainAttribs.push_back(new HostRecord(text));
    return description;
}

QJsonObject parsed(const std::string& document)
{
    QJsonParseError error{};
    const QJsonObject json =
        QJsonDocument::fromJson(QByteArray::fromStdString(document), &error).object();
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    return json;
}

/// The main records of the document of a description.
QJsonArray mainRecords(const std::vector<std::string>& texts)
{
    return parsed(descriptionOf(texts)->serialization())["mainAttribs"].toArray();
}

/// The source of a record as it comes out of the document of its description, UTF-8.
std::string sourceInDocument(const std::string& source)
{
    RvTimeLineAttribute description;
    description.mixAttribs = {new RvAttribute};
    description.mixAttribs.front()->source = source;
    return parsed(description.serialization())["mixAttribs"]
        .toArray()
        .first()
        .toObject()["source"]
        .toString()
        .toStdString();
}

TEST(TimelineDescriptionTest, StartsEmptyWithoutASize)
{
    const RvTimeLineAttribute description;
    EXPECT_EQ(description.width, 0.0F);
    EXPECT_EQ(description.height, 0.0F);
    EXPECT_TRUE(description.mainAttribs.empty());
    EXPECT_TRUE(description.mixAttribs.empty());
    EXPECT_EQ(description.serialization(), emptyDocument);
}

TEST(TimelineDescriptionTest, DeletesItsRecordsTheMainOnesFirst)
{
    std::vector<std::string> deleted;
    {
        RvTimeLineAttribute description;
        description.mixAttribs = {new WatchedRecord("mix 1", deleted),
                                  new WatchedRecord("mix 2", deleted)};
        description.mainAttribs = {new WatchedRecord("main 1", deleted),
                                   new WatchedRecord("main 2", deleted)};
    }
    EXPECT_EQ(deleted, (std::vector<std::string>{"main 1", "main 2", "mix 1", "mix 2"}));
}

TEST(TimelineDescriptionTest, DeletingPassesOverNullEntries)
{
    std::vector<std::string> deleted;
    {
        RvTimeLineAttribute description;
        description.mainAttribs = {nullptr, new WatchedRecord("main", deleted), nullptr};
        description.mixAttribs = {nullptr, new WatchedRecord("mix", deleted), nullptr};
    }
    EXPECT_EQ(deleted, (std::vector<std::string>{"main", "mix"}));
}

TEST(TimelineDescriptionTest, ACopySharesTheRecords)
{
    RvTimeLineAttribute description;
    description.width = 1280.0F;
    description.height = 720.0F;
    description.mainAttribs = {new RvAttribute, new RvAttribute};
    description.mixAttribs = {new RvAttribute};

    RvTimeLineAttribute copy(description);

    EXPECT_EQ(copy.width, 1280.0F);
    EXPECT_EQ(copy.height, 720.0F);
    EXPECT_EQ(copy.mainAttribs, description.mainAttribs);
    EXPECT_EQ(copy.mixAttribs, description.mixAttribs);
    // The lists are the copy's own: emptied, the copy deletes nothing.
    copy.mainAttribs.clear();
    copy.mixAttribs.clear();
    EXPECT_EQ(description.mainAttribs.size(), 2U);
    EXPECT_EQ(description.mixAttribs.size(), 1U);
}

TEST(TimelineDescriptionTest, CannotBeAssigned)
{
    EXPECT_FALSE(std::is_copy_assignable_v<RvTimeLineAttribute>);
}

TEST(TimelineDescriptionTest, TheDocumentIsIndentedWithKeysInOrder)
{
    RvTimeLineAttribute description;
    description.width = 1920.0F;
    description.height = 1080.5F;
    description.mainAttribs = {new RvAttribute};
    RvAttribute& main = *description.mainAttribs.front();
    main.uuid = std::numeric_limits<std::uint64_t>::max();
    main.source = "clip.mp4";
    main.duration = 4000;
    main.alpha = 0.3F;
    description.mixAttribs = {new RvMatteAttribute};
    RvAttribute& mix = *description.mixAttribs.front();
    mix.uuid = 7;
    mix.type = 6;

    EXPECT_EQ(description.serialization(), "{\n"
                                           "    \"height\": 1080.5,\n"
                                           "    \"mainAttribs\": [\n"
                                           "        {\n"
                                           "            \"alpha\": 0.30000001192092896,\n"
                                           "            \"duration\": \"4000\",\n"
                                           "            \"source\": \"clip.mp4\",\n"
                                           "            \"speed\": 1,\n"
                                           "            \"startTime\": \"0\",\n"
                                           "            \"type\": 1,\n"
                                           "            \"uuid\": \"18446744073709551615\",\n"
                                           "            \"zOrder\": 0\n"
                                           "        }\n"
                                           "    ],\n"
                                           "    \"mixAttribs\": [\n"
                                           "        {\n"
                                           "            \"alpha\": 1,\n"
                                           "            \"bindType\": 0,\n"
                                           "            \"duration\": \"0\",\n"
                                           "            \"range\": 0,\n"
                                           "            \"source\": \"\",\n"
                                           "            \"speed\": 1,\n"
                                           "            \"startTime\": \"0\",\n"
                                           "            \"target\": [\n"
                                           "            ],\n"
                                           "            \"type\": 6,\n"
                                           "            \"uuid\": \"7\",\n"
                                           "            \"zOrder\": 0\n"
                                           "        }\n"
                                           "    ],\n"
                                           "    \"width\": 1920\n"
                                           "}\n");
}

TEST(TimelineDescriptionTest, TheSizeIsWrittenAsTheDoubleOfTheFloat)
{
    RvTimeLineAttribute description;
    description.width = 0.1F;
    description.height = -std::numeric_limits<float>::max();
    const QJsonObject json = parsed(description.serialization());
    EXPECT_EQ(json["width"].toDouble(), static_cast<double>(0.1F));
    EXPECT_EQ(json["height"].toDouble(), -static_cast<double>(std::numeric_limits<float>::max()));
}

TEST(TimelineDescriptionTest, ASizeThatIsNoNumberIsNull)
{
    RvTimeLineAttribute description;
    description.width = std::numeric_limits<float>::quiet_NaN();
    description.height = std::numeric_limits<float>::infinity();
    const QJsonObject json = parsed(description.serialization());
    EXPECT_TRUE(json["width"].isNull());
    EXPECT_TRUE(json["height"].isNull());
}

TEST(TimelineDescriptionTest, EveryListHasItsRecordsInOrder)
{
    RvTimeLineAttribute description;
    for (const std::uint64_t id : {3, 1, 2}) {
        description.mainAttribs.push_back(new RvMediaAttribute);
        description.mainAttribs.back()->uuid = id;
        description.mixAttribs.push_back(new RvAudioAttribute);
        description.mixAttribs.back()->uuid = id + 10;
    }
    const QJsonObject json = parsed(description.serialization());
    QStringList main;
    for (const QJsonValue& record : json["mainAttribs"].toArray())
        main.append(record.toObject()["uuid"].toString());
    QStringList mix;
    for (const QJsonValue& record : json["mixAttribs"].toArray())
        mix.append(record.toObject()["uuid"].toString());
    EXPECT_EQ(main, (QStringList{"3", "1", "2"}));
    EXPECT_EQ(mix, (QStringList{"13", "11", "12"}));
}

TEST(TimelineDescriptionTest, EveryRecordIsWrittenAsItWritesItself)
{
    for (const std::string& kind : kindNames()) {
        RvTimeLineAttribute description;
        description.mixAttribs = {kindSample(kind).record().release()};
        const std::string own = description.mixAttribs.front()->serialization();
        const QJsonArray records = parsed(description.serialization())["mixAttribs"].toArray();
        ASSERT_EQ(records.size(), 1) << kind;
        EXPECT_EQ(records.first().toObject(), parsed(own)) << kind;
    }
}

TEST(TimelineDescriptionTest, TheRecordsOwnTextIsAskedFor)
{
    const QJsonArray records = mainRecords({"{\"host\": {\"deep\": [1, 2]}}", "{}"});
    ASSERT_EQ(records.size(), 2);
    EXPECT_EQ(QJsonDocument(records.first().toObject()).toJson(QJsonDocument::Compact),
              "{\"host\":{\"deep\":[1,2]}}");
    EXPECT_TRUE(records.last().toObject().isEmpty());
}

TEST(TimelineDescriptionTest, ARecordWhoseTextIsNoObjectIsLeftOut)
{
    const std::string withNull("{\"a\":1}\0x", 9);
    for (const std::string& text :
         {std::string(), std::string("[]"), std::string("[{\"a\": 1}]"), std::string("1"),
          std::string("null"), std::string("\"text\""), std::string("no JSON at all"),
          std::string("{"), std::string("{\"a\": 1"), std::string("{\"a\": 1} {}"),
          std::string("{\"a\": nan}"), std::string("\xef\xbb\xbf{\"a\": 1}"), withNull,
          std::string(1000000, '['), std::string(1, '\0')}) {
        const QJsonArray records = mainRecords({"{\"n\": 1}", text, "{\"n\": 2}"});
        ASSERT_EQ(records.size(), 2) << text.substr(0, 30);
        EXPECT_EQ(records[0].toObject()["n"].toInt(), 1);
        EXPECT_EQ(records[1].toObject()["n"].toInt(), 2);
    }
}

TEST(TimelineDescriptionTest, ADocumentOfRecordsThatAreAllLeftOutIsThatOfNone)
{
    EXPECT_EQ(descriptionOf({"", "[]", "x"})->serialization(), emptyDocument);
}

TEST(TimelineDescriptionTest, NullEntriesAreLeftOut)
{
    RvTimeLineAttribute description;
    description.mainAttribs = {nullptr};
    description.mixAttribs = {nullptr, nullptr};
    EXPECT_EQ(description.serialization(), emptyDocument);
}

TEST(TimelineDescriptionTest, AsciiComesOutAsItIs)
{
    std::string ascii;
    for (char character = 1; character < 127; ++character)
        ascii += character;
    EXPECT_EQ(sourceInDocument(ascii), ascii);
}

TEST(TimelineDescriptionTest, CharactersBeyondAsciiComeOutEncodedTwice)
{
    EXPECT_EQ(sourceInDocument("\xc3\xa9"), "\xc3\x83\xc2\xa9");                 // é
    EXPECT_EQ(sourceInDocument("a\xe4\xb8\xadz"), "a\xc3\xa4\xc2\xb8\xc2\xadz"); // 中
    EXPECT_EQ(sourceInDocument("\xf0\x9f\x8e\xac"),                              // a clapper board
              "\xc3\xb0\xc2\x9f\xc2\x8e\xc2\xac");
}

TEST(TimelineDescriptionTest, BytesThatAreNoTextComeOutAsTheReplacementEncodedTwice)
{
    EXPECT_EQ(sourceInDocument("a\xffz"), "a\xc3\xaf\xc2\xbf\xc2\xbdz");
}

TEST(TimelineDescriptionTest, EveryByteOfAHostsTextIsOneCharacter)
{
    const QJsonArray records = mainRecords({"{\"k\xff\": \"v\xe9\"}"});
    ASSERT_EQ(records.size(), 1);
    EXPECT_EQ(records.first().toObject()[QStringLiteral("k\u00ff")].toString(),
              QStringLiteral("v\u00e9"));
}

TEST(TimelineDescriptionTest, ALocaleWithADecimalCommaChangesNothing)
{
    RvTimeLineAttribute description;
    description.width = 1280.5F;
    description.mixAttribs = {kindSample("Liquify").record().release(),
                              kindSample("Video").record().release()};
    const std::string before = description.serialization();
    const QLocale localeBefore;
    const QTemporaryDir folder;
    const ScopedCommaLocale commas(folder.path());
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(description.serialization(), before);
    QLocale::setDefault(localeBefore);
    EXPECT_NE(before.find("\"width\": 1280.5"), std::string::npos);
    EXPECT_NE(before.find("\"fileStartTime\": \"1500.75\""), std::string::npos);
}

TEST(TimelineDescriptionTest, ACaptureCanBeWritten)
{
    const ScopedCache cache;
    const LiveTimeline timeline;
    timeline.addPicture(1);
    for (int type = 2; type <= 13; ++type)
        timeline.addMix(withId(newLiveTrack(type), 10 + static_cast<std::uint64_t>(type)).get());
    const QJsonObject json = parsed(timeline.capture()->serialization());
    EXPECT_EQ(json["width"].toDouble(), 1280.0);
    EXPECT_EQ(json["height"].toDouble(), 720.0);
    EXPECT_EQ(json["mainAttribs"].toArray().size(), 1);
    EXPECT_EQ(json["mixAttribs"].toArray().size(), 10); // no matte, no frame
}

} // namespace
