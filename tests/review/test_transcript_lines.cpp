// What the result screen shows and hands out of an item, headless.
#include "JsonSchema.h"
#include "Transcripts.h"

#include "review/TranscriptLines.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace TranscriptLines;

namespace {

HistoryItem sample()
{
    TranscriptionResult r;
    const TranscriptSegment a{.startMs = 0, .endMs = 2000, .text = QStringLiteral("Herr Schäfer kommt."),
                              .words = {{"Herr", 0, 400}, {"Schäfer", 400, 1200}, {"kommt.", 1200, 2000}}};
    const TranscriptSegment b{.startMs = 62000, .endMs = 64000, .text = QStringLiteral("Ohne Wörter."), .words = {}};
    r.segments = {a, b};
    r.fullText = a.text + u' ' + b.text;
    r.language = QStringLiteral("de");
    r.processingSeconds = 12.34;
    return Transcripts::item(r, QStringLiteral("Mühle.Gespräch.m4a"));
}

} // namespace

TEST(TranscriptLines, AWordlessSegmentIsOneWordOfItsOwn)
{
    const QList<TranscriptLine> lines = originalLines(sample().result);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].words.size(), 3);
    EXPECT_EQ(lines[1].timeMs, 62000);
    EXPECT_EQ(lines[1].words, (QList<TranscriptWord>{{"Ohne Wörter.", 62000, 64000}}));
}

TEST(TranscriptLines, KeyFollowsWhatChangesTheLaidOutText)
{
    HistoryItem item = sample();
    const QString key = rebuildKey(item, true);
    EXPECT_EQ(rebuildKey(item, true), key);
    EXPECT_NE(rebuildKey(item, false), key);
    // Refined texts do not enter; rules and segments do.
    item.smoothed.insert(2, QStringLiteral("Geglättet."));
    EXPECT_EQ(rebuildKey(item, true), key);
    item.corrections << Correction{{}, "Schäfer", "Schaefer"};
    const QString corrected = rebuildKey(item, true);
    EXPECT_NE(corrected, key);
    item.corrections.first().to = QStringLiteral("Schäffer");
    EXPECT_NE(rebuildKey(item, true), corrected) << "a changed rule is a changed list";
    item.corrections.clear();
    EXPECT_EQ(rebuildKey(item, true), key);
    item.result.segments.removeLast();
    EXPECT_NE(rebuildKey(item, true), key);
    EXPECT_NE(rebuildKey(sample(), true), key) << "another item, another key";
}

TEST(TranscriptLines, CurrentTextFollowsViewTimestampsAndCorrections)
{
    HistoryItem item = sample();
    EXPECT_EQ(currentText(item, originalView, false), item.result.fullText);
    // With time marks the rule runs over them too.
    item.corrections << Correction{{}, "00", "§"} << Correction{{}, "Schäfer", "Schaefer"};
    EXPECT_EQ(currentText(item, originalView, true), QStringLiteral("[0:§] Herr Schaefer kommt.\n[1:02] Ohne Wörter."));
    item.smoothed.insert(3, QStringLiteral("Herr Schäfer ist da."));
    EXPECT_EQ(currentText(item, 3, true), QStringLiteral("Herr Schaefer ist da."));
    EXPECT_EQ(currentText(item, 2, true), QString());
    EXPECT_EQ(currentText(item, speakerView, true), QString());
    item.speakerText = QStringLiteral("Sprecher 1: Herr Schäfer.");
    EXPECT_EQ(currentText(item, speakerView, false), QStringLiteral("Sprecher 1: Herr Schaefer."));
    EXPECT_EQ(searchBase(item), QStringLiteral("Herr Schäfer kommt. Ohne Wörter.")) << "raw text, rules not applied";
}

TEST(TranscriptLines, ViewsHeaderAndExportNames)
{
    HistoryItem item = sample();
    item.smoothed.insert(3, QStringLiteral("drei"));
    item.smoothed.insert(1, QStringLiteral("eins"));
    EXPECT_EQ(views(item), (QList<qint64>{0, 1, 3}));
    EXPECT_EQ(surface(item, 3), Surface::Level);
    EXPECT_EQ(surface(item, 2), Surface::Original) << "a level that is not there shows the original";
    EXPECT_EQ(viewingLevel(speakerView), std::nullopt);

    EXPECT_EQ(exportBase(item, originalView), QStringLiteral("Mühle.Gespräch"));
    EXPECT_EQ(exportBase(item, speakerView), QStringLiteral("Mühle.Gespräch-sprecher"));
    item.fileName = QStringLiteral(".hidden");
    EXPECT_EQ(exportBase(item, originalView), QStringLiteral(".hidden"));

    EXPECT_EQ(metaString(item), QStringLiteral("14.03.2025 09:30  ·  2 Segmente  ·  in 12.3 s  ·  de"));
    item.result.language.clear();
    EXPECT_EQ(metaString(item).count(QStringLiteral("  ·  ")), 2) << "no part for an empty language";
    EXPECT_EQ(currentMs(1.2345), 1235);
}

TEST(TranscriptLines, SpeakerViewLinesKeyAndPicker)
{
    HistoryItem item = sample();
    EXPECT_EQ(views(item), QList<qint64>{originalView});
    item.speakerText = QStringLiteral("Sprecher 1: Herr Schäfer kommt.\nSprecher 2: Das stimmt nicht\nOhne Wörter.");
    item.smoothed.insert(2, QStringLiteral("Geglättet."));
    EXPECT_EQ(views(item), (QList<qint64>{originalView, speakerView, 2}));
    EXPECT_EQ(surface(item, speakerView), Surface::Speaker);

    const QList<TranscriptLine> lines =
        speakerLines(SpeakerTurn::build(*item.speakerText, item.result.segments));
    ASSERT_EQ(lines.size(), 5);
    EXPECT_TRUE(lines[0].isHeader);
    EXPECT_EQ(lines[0].text, QStringLiteral("Sprecher 1"));
    EXPECT_EQ(lines[0].timeMs, 0);
    EXPECT_EQ(lines[1].words.size(), 3);
    // A turn without anchor: a header without time, then its own content.
    EXPECT_TRUE(lines[2].isHeader);
    EXPECT_EQ(lines[2].timeMs, std::nullopt);
    EXPECT_EQ(lines[3].text, QStringLiteral("Das stimmt nicht"));
    EXPECT_FALSE(lines[3].isHeader);
    // The wordless segment gets no stand-in word here.
    EXPECT_EQ(lines[4].timeMs, 62000);
    EXPECT_TRUE(lines[4].words.isEmpty());

    const QString key = speakerRebuildKey(item, true);
    EXPECT_TRUE(key.startsWith(QStringLiteral("spk|")));
    EXPECT_NE(key, rebuildKey(item, true));
    EXPECT_NE(speakerRebuildKey(item, false), key);
    item.corrections << Correction{{}, "Schäfer", "Schaefer"};
    EXPECT_NE(speakerRebuildKey(item, true), key);
    item.corrections.clear();
    item.speakerText = QStringLiteral("Sprecher 1: anders");
    EXPECT_NE(speakerRebuildKey(item, true), key);
    // Without a speaker text the speaker view falls back to the original.
    item.speakerText.reset();
    EXPECT_EQ(surface(item, speakerView), Surface::Original);
}

TEST(TranscriptLines, GivenNamesAndCorrectionsReachEveryViewSubtitleAndTheJson)
{
    HistoryItem item = sample();
    item.speakerText = QStringLiteral("Sprecher 1: Herr Schäfer kommt.\n  Sprecher 2: Ohne Wörter.");
    item.smoothed.insert(1, QStringLiteral("Sprecher 1: Herr Schäfer ist da."));
    item.corrections << Correction{{}, "Schäfer", "Schaefer"};
    const QString unnamedKey = speakerRebuildKey(item, true);
    item.speakerNames.insert(QStringLiteral("Sprecher 1"), QStringLiteral("Diane Miller"));
    EXPECT_NE(speakerRebuildKey(item, true), unnamedKey);

    const QList<TranscriptLine> lines =
        speakerLines(SpeakerTurn::build(*item.speakerText, item.result.segments), item.speakerNames);
    EXPECT_EQ(lines[0].text, QStringLiteral("Diane Miller"));
    EXPECT_EQ(lines[2].text, QStringLiteral("Sprecher 2"));
    EXPECT_EQ(currentText(item, speakerView, false),
              QStringLiteral("Diane Miller: Herr Schaefer kommt.\n  Sprecher 2: Ohne Wörter."));
    // "Zeitmarken" in the speaker view: the time of each turn in front of it.
    EXPECT_EQ(currentText(item, speakerView, true),
              QStringLiteral("[0:00] Diane Miller: Herr Schaefer kommt.\n[1:02] Sprecher 2: Ohne Wörter."));
    EXPECT_EQ(currentText(item, 1, false), QStringLiteral("Diane Miller: Herr Schaefer ist da."));

    // A name shown for several labels renames them all; a label shown as a name is no longer found by itself.
    item.speakerNames.insert(QStringLiteral("Sprecher 2"), QStringLiteral("Diane Miller"));
    EXPECT_EQ(labelsShownAs(item, QStringLiteral("Diane Miller")), (QStringList{"Sprecher 1", "Sprecher 2"}));
    EXPECT_TRUE(labelsShownAs(item, QStringLiteral("Sprecher 1")).isEmpty());
    item.speakerNames.remove(QStringLiteral("Sprecher 2"));

    // Subtitles carry the corrections always, and the names when asked.
    const QList<Cue> plain = subtitleCues(item, false);
    ASSERT_EQ(plain.size(), 2);
    EXPECT_EQ(plain[0].text, QStringLiteral("Herr Schaefer kommt."));
    EXPECT_EQ(plain[0].speaker, std::nullopt);
    const QList<Cue> named = subtitleCues(item, true);
    EXPECT_EQ(named[0].speaker, QStringLiteral("Diane Miller"));
    EXPECT_EQ(named[1].speaker, QStringLiteral("Sprecher 2"));

    QFile schemaFile(QStringLiteral(SAGWERK_TRANSCRIPT_SCHEMA));
    ASSERT_TRUE(schemaFile.open(QIODevice::ReadOnly));
    const QJsonValue schema = QJsonDocument::fromJson(schemaFile.readAll()).object();
    const QJsonObject json = QJsonDocument::fromJson(TranscriptJson::encode(transcriptDocument(item))).object();
    EXPECT_EQ(JsonSchema::violations(schema, json), QStringList());
    EXPECT_EQ(json["speakers"], (QJsonArray{"Diane Miller", "Sprecher 2"}));
    EXPECT_EQ(json["model"], QJsonValue()) << "not known for this transcript";
    const QJsonObject first = json["segments"][0].toObject();
    EXPECT_EQ(first["text"], QStringLiteral("Herr Schaefer kommt."));
    EXPECT_EQ(first["originalText"], QStringLiteral("Herr Schäfer kommt."));
    EXPECT_EQ(first["words"][1], (QJsonObject{{"text", "Schäfer"}, {"startMs", 400}, {"endMs", 1200}, {"speaker", "Diane Miller"}}));
    EXPECT_EQ(json["corrections"][0]["to"], QStringLiteral("Schaefer"));
    // Where the voice changes inside a segment (and the new line runs on into the next),
    // the subtitles cut the segment there and the JSON puts each word under its speaker.
    item.speakerText = QStringLiteral("Sprecher 1: Herr Schäfer\nSprecher 2: kommt. Ohne Wörter.");
    const QList<Cue> cut = subtitleCues(item, true);
    ASSERT_EQ(cut.size(), 3);
    EXPECT_EQ(cut[0].text, QStringLiteral("Herr Schaefer"));
    EXPECT_EQ(cut[0].endMs, 1200);
    EXPECT_EQ(cut[0].speaker, QStringLiteral("Diane Miller"));
    EXPECT_EQ(cut[1].text, QStringLiteral("kommt."));
    EXPECT_EQ(cut[1].startMs, 1200);
    EXPECT_EQ(cut[1].speaker, QStringLiteral("Sprecher 2"));
    EXPECT_EQ(cut[2].speaker, QStringLiteral("Sprecher 2"));
    const QJsonObject split = QJsonDocument::fromJson(TranscriptJson::encode(transcriptDocument(item))).object();
    EXPECT_EQ(JsonSchema::violations(schema, split), QStringList());
    EXPECT_EQ(split["segments"][0]["speaker"], QStringLiteral("Diane Miller"));
    EXPECT_EQ(split["segments"][0]["words"][1]["speaker"], QStringLiteral("Diane Miller"));
    EXPECT_EQ(split["segments"][0]["words"][2]["speaker"], QStringLiteral("Sprecher 2"));
    EXPECT_EQ(split["segments"][1]["speaker"], QStringLiteral("Sprecher 2"));

    // The schema is strict enough to catch a document that drifts from it.
    QJsonObject drifted = json;
    drifted["segments"] = QJsonArray{QJsonObject{{"startMs", 1.5}, {"text", "x"}}};
    EXPECT_EQ(JsonSchema::violations(schema, drifted).size(), 5) << JsonSchema::violations(schema, drifted).join('\n').toStdString();
}
