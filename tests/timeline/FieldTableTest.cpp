// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/FieldTable.h"
#include "timeline/FieldDocument.h"

#include <gtest/gtest.h>

#include <QFile>

#include <algorithm>

namespace {

/// The measured table: measured once, because that takes a while.
const std::vector<FieldRow>& measuredRows()
{
    static const std::vector<FieldRow> rows = measureFields();
    return rows;
}

// What the table has to say, derived from what the operations are meant to do. A row is a field and
// a letter for each column: Y yes, N no, - no way, X never, O other, A always, T track only,
// 0 none, L lost.

struct ExpectedRow
{
    std::string field;
    std::string letters;
};

using ExpectedRows = std::vector<ExpectedRow>;

std::string cellOf(char letter)
{
    switch (letter) {
    case 'Y':
        return fieldCell::yes;
    case 'N':
        return fieldCell::no;
    case '-':
        return fieldCell::noWay;
    case 'X':
        return fieldCell::never;
    case 'O':
        return fieldCell::other;
    case 'A':
        return fieldCell::always;
    case 'T':
        return fieldCell::trackOnly;
    case '0':
        return fieldCell::none;
    case 'L':
        return fieldCell::lost;
    default:
        return "?";
    }
}

ExpectedRows operator+(ExpectedRows first, const ExpectedRows& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const ExpectedRows baseRows{
    {"uuid", "OYYYYY"},     {"source", "YYYYNN"}, {"startTime", "YYYYYY"},
    {"duration", "YYYYYY"}, {"type", "YYY0NY"},   {"zOrder", "YYYYYY"},
    {"alpha", "YYYYYY"},    {"speed", "YYYYYY"},  {"auxText", "NNYYYN"},
};

const ExpectedRows mediaRows =
    baseRows + ExpectedRows{
                   {"fileStartTime", "YYYYYY"}, {"width", "YYYYYY"},     {"height", "YYYYYY"},
                   {"positionX", "YYYYYY"},     {"positionY", "YYYYYY"}, {"scale", "YYYYYY"},
                   {"rotation", "YYYYYY"},
               };

const ExpectedRows volumeRow{{"volume (track)", "--NNNN"}};

const ExpectedRows audioRows = baseRows + ExpectedRows{{"fileStartTime", "YYYYYY"}} + volumeRow;

const ExpectedRows bindingRows{
    {"range", "YYYYYY"},
    {"bindType", "YYYYYY"},
    {"target", "YYYYYY"},
    {"target (further entry)", "YY-NN-"},
};

const ExpectedRows detectionRows =
    baseRows + ExpectedRows{{"mode", "YYYYNN"}, {"modePath", "YYYYNN"}} + bindingRows;

const ExpectedRows effectRows = baseRows + bindingRows + ExpectedRows{{"detect", "YYYYYY"}};

const ExpectedRows arRows = effectRows + ExpectedRows{
                                             {"globalParamConfiguration", "YYYYYY"},
                                             {"scriptParams (value)", "YYYYYY"},
                                             {"scriptParams (entry added)", "YYYYYN"},
                                             {"scriptParams (entry removed)", "YY-YN-"},
                                         };

const ExpectedRows filterRows{
    {"filterAlpha", "YYYNNN"},
    {"floatParams (value)", "YYYYYY"},
    {"floatParams (entry added)", "YYYYYN"},
    {"floatParams (entry removed)", "YY-YN-"},
    {"faceFloatParams (value)", "YYYYYY"},
    {"faceFloatParams (entry added)", "YYYYYN"},
    {"faceFloatParams (entry removed)", "YY-YN-"},
    {"arFacePlists (value)", "NNYYYN"},
    {"arFacePlists (entry added)", "NNYYYN"},
    {"arFacePlists (entry removed)", "NN-YN-"},
};

const ExpectedRows beautyRows =
    filterRows + ExpectedRows{
                     {"beautyType", "YYYYYY"},
                     {"enableBeautyGenderDistinction", "YNYYYY"},
                     {"coeffientParameterConfig", "YNYYYY"},
                     {"genderParamCoeffientsA (value)", "YNNTTN"},
                     {"genderParamCoeffientsA (entry added)", "YNNTTN"},
                     {"genderParamCoeffientsA (entry removed)", "YN-TN-"},
                     {"genderParamCoeffientsB (value)", "YNNTTN"},
                     {"genderParamCoeffientsB (entry added)", "YNNTTN"},
                     {"genderParamCoeffientsB (entry removed)", "YN-TN-"},
                     {"applyGenderToAR", "YNYYYY"},
                     {"allFaceBeautyParam", "YNYYYY"},
                     {"allBeautyAnattaForFaceControls", "YNYYYY"},
                     {"manualLongLegRange", "YNYYYY"},
                     {"manualSlimHeadParam", "YNYYYY"},
                     {"manualLongLegEnable", "YNYYYY"},
                     {"mapPointsData", "YNYYYY"},
                     {"beautyActiveMaskImageRef", "YNYYYN"},
                     {"beautyMaskFaceId", "YNYYYY"},
                     {"beautyMaskBrushType", "YNYYYY"},
                     {"beautyActiveMaskImage", "NNYYYY"},
                 };

const ExpectedRows makeupRows{
    {"suitAlpha", "YYYYYY"},
    {"groupDatas (number)", "YYYYYY"},
    {"groupDatas: groupDataId", "YYYYYY"},
    {"groupDatas: groupName", "YYYYYY"},
    {"groupDatas: groupAlpha", "YYYYYY"},
    {"groupDatas: entries", "YNYYYY"},
    {"groupFaceDatas (number)", "YYYYYY"},
    {"groupFaceDatas: faceId", "NYYYYN"},
    {"groupFaceDatas: suitAlpha", "NYYYYN"},
    {"groupFaceDatas: groupDatas (number)", "NNYYYN"},
    {"groupFaceDatas: groupDatas (value)", "YNYYYY"},
    {"groupFaceDatas: groupOrders", "NNYYYN"},
    {"groupOrders", "NYYYYN"},
};

const ExpectedRows liquifyRows{
    {"centerX", "YYYYYY"},
    {"centerY", "YYYYYY"},
    {"radius", "YYYYYY"},
    {"strength", "YYYYYY"},
    {"movePoints", "YYYYYY"},
    {"liquifyStyle", "YYYYYY"},
    {"effectPath (the strokes saved there)", "YYYYYY"},
};

/// The rows with some of them replaced.
ExpectedRows with(ExpectedRows rows, const ExpectedRows& replacements)
{
    for (const ExpectedRow& replacement : replacements) {
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const ExpectedRow& each) {
            return each.field == replacement.field;
        });
        if (row == rows.end())
            ADD_FAILURE() << "no row " << replacement.field;
        else
            *row = replacement;
    }
    return rows;
}

/// The rows with some columns replaced: a letter for each column, a space for those that stay.
ExpectedRows withColumns(ExpectedRows rows, const std::string& letters)
{
    for (ExpectedRow& row : rows) {
        for (std::size_t column = 0; column < letters.size(); ++column) {
            if (letters[column] != ' ')
                row.letters[column] = letters[column];
        }
    }
    return rows;
}

const std::string neverATrack = "  XXXX";

/// A picture has no file start. A video that took its place under its id is taken for it.
ExpectedRows imageRows()
{
    return with(mediaRows, {{"fileStartTime", "YY-NN-"}, {"type", "YYY0NN"}});
}

ExpectedRows videoRows()
{
    return with(mediaRows, {{"type", "YYY0NN"}}) + volumeRow;
}

/// A matte is made with the common values alone, never described, never updated.
ExpectedRows matteRows()
{
    const ExpectedRows made =
        with(withColumns(baseRows, "  XTXX"), {{"source", "YYXNXX"}, {"type", "YYX0XX"}});
    ExpectedRows rows =
        made + withColumns(bindingRows, "  XNXX") + ExpectedRows{{"detect", "YNXNXX"}};
    for (const char* look : {"path", "path type", "centre", "eclosion", "size limit", "blend mode"})
        rows.push_back({std::string(look) + " (track)", "--XNXX"});
    return rows;
}

/// A new layer has source, times and bindings, and an id of its own.
ExpectedRows layerRows()
{
    return with(arRows, {{"uuid", "OYYNYN"},
                         {"zOrder", "YYYNYY"},
                         {"alpha", "YYYNYY"},
                         {"speed", "YYYNYY"},
                         {"auxText", "NNYNYN"},
                         {"globalParamConfiguration", "YYYNYY"},
                         {"scriptParams (value)", "YYYNYY"},
                         {"scriptParams (entry added)", "YYYNYN"},
                         {"scriptParams (entry removed)", "YY-NN-"}});
}

/// A label is described, with the values of any AR effect, but never made or updated.
ExpectedRows labelRows()
{
    return with(withColumns(arRows, "   XXN") + withColumns(beautyRows, "  -XX-"),
                {{"uuid", "OYYXXL"},
                 {"type", "YYYXXL"},
                 {"target (further entry)", "YY-XX-"},
                 {"scriptParams (entry removed)", "YY-XX-"}});
}

/// A liquify counts as changed, and so is updated, every time.
ExpectedRows allLiquifyRows()
{
    return with(withColumns(arRows + beautyRows + liquifyRows, "A"),
                {{"uuid", "OYYYYY"}, {"auxText", "ANYYYY"}, {"arFacePlists (value)", "ANYYYY"}});
}

struct ExpectedKind
{
    std::string kind;
    ExpectedRows rows;
};

std::vector<ExpectedKind> expectedKinds()
{
    return {
        {"base", withColumns(baseRows, neverATrack)},
        {"image", imageRows()},
        {"video", videoRows()},
        {"audio", audioRows},
        {"detection", with(detectionRows, {{"source", "YY-NN-"}})},
        {"effect", withColumns(effectRows, neverATrack)},
        {"matte", matteRows()},
        {"AR effect", withColumns(arRows, neverATrack)},
        {"AR filter", arRows + filterRows},
        {"AR beauty", arRows + beautyRows},
        {"AR makeup", arRows + beautyRows + makeupRows},
        {"AR layer", layerRows()},
        {"AR frame", withColumns(arRows + beautyRows, neverATrack)},
        {"AR label", labelRows()},
        {"AR liquify", allLiquifyRows()},
    };
}

std::string lineOf(const FieldRow& row)
{
    std::string line = row.kind + ", " + row.field + ':';
    for (const std::string& cell : row.cells)
        line += ' ' + cell;
    return line + '\n';
}

TEST(FieldTableTest, EveryFieldShowsWhereItIsMeantTo)
{
    std::string expected;
    for (const ExpectedKind& kind : expectedKinds()) {
        for (const ExpectedRow& expectedRow : kind.rows) {
            FieldRow row{kind.kind, expectedRow.field, {}};
            std::transform(expectedRow.letters.begin(), expectedRow.letters.end(),
                           row.cells.begin(), cellOf);
            expected += lineOf(row);
        }
    }
    std::string measured;
    for (const FieldRow& row : measuredRows())
        measured += lineOf(row);
    EXPECT_EQ(measured, expected);
}

TEST(FieldTableTest, EveryCellThatIsNotYesHasANoteAndEveryNoteACell)
{
    EXPECT_EQ(FieldDocument(measuredRows()).flaws(), std::vector<std::string>{});
}

TEST(FieldTableTest, TheDocumentSaysWhatIsMeasured)
{
    const QByteArray measured = QByteArray::fromStdString(FieldDocument(measuredRows()).markdown());
    QFile file(QStringLiteral(NORVEL_FIELD_DOCUMENT));
    if (qEnvironmentVariableIsSet("NORVEL_WRITE_TABLE")) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Text));
        ASSERT_EQ(file.write(measured), measured.size());
        return;
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text)) << NORVEL_FIELD_DOCUMENT;
    EXPECT_EQ(file.readAll().toStdString(), measured.toStdString())
        << "to write the document anew, run this test with NORVEL_WRITE_TABLE=1";
}

} // namespace
