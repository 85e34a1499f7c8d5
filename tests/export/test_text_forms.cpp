// Stamp arithmetic of the text and subtitle forms, the date, and WebVTT as a real reader
// sees it.
#include "export/Format.h"
#include "export/TextForms.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace {
TranscriptionResult result(const QList<std::tuple<qint64, qint64, QString>> &segments)
{
    TranscriptionResult r;
    QStringList texts;
    for (const auto &[start, end, text] : segments) {
        TranscriptSegment s;
        s.startMs = start;
        s.endMs = end;
        s.text = text;
        r.segments << s;
        texts << text;
    }
    r.fullText = texts.join(u' ');
    return r;
}
} // namespace

TEST(TextForms, PlainTextMinutesRunPastAnHour)
{
    const TranscriptionResult r = result({{-5, 900, "Hallo."}, {3599999, 3600500, "Kurz vor."}, {3600000, 3600001, ""},
                                          {4500000, 4500001, "Viertel."}});
    EXPECT_EQ(TextForms::plainText(r, false), r.fullText);
    EXPECT_EQ(TextForms::plainText(r, true),
              QStringLiteral("[0:00] Hallo.\n[59:59] Kurz vor.\n[60:00] \n[75:00] Viertel."));
    EXPECT_EQ(TextForms::plainText(result({}), true), QString());
    // The date of a header is German local time.
    const QDateTime local(QDate(2026, 3, 7), QTime(9, 5, 59));
    EXPECT_EQ(Format::date(local.toUTC()), QStringLiteral("07.03.2026 09:05"));
}

TEST(TextForms, SubtitlesNumberEverySegmentAndCutMilliseconds)
{
    QList<Cue> cues = TextForms::cues(result({{-5, 3599999, "Eins"}, {3600000, 363599999, ""}, {1500, 1000, "Drei"}}));
    EXPECT_EQ(TextForms::srt(cues), QStringLiteral("1\n00:00:00,000 --> 00:59:59,999\nEins\n\n"
                                                   "2\n01:00:00,000 --> 100:59:59,999\n\n\n"
                                                   "3\n00:00:01,500 --> 00:00:01,000\nDrei\n"));
    EXPECT_EQ(TextForms::srt({}), QString());
    cues[0].speaker = QStringLiteral("Diane Miller");
    EXPECT_TRUE(TextForms::srt(cues).startsWith(QStringLiteral("1\n00:00:00,000 --> 00:59:59,999\nDiane Miller: Eins\n")));
}

namespace {

struct ParsedCue {
    QString id;
    qint64 startMs = 0;
    qint64 durationMs = 0;
    QString payload;
    bool operator==(const ParsedCue &) const = default;
};

// The cues of a WebVTT file as FFmpeg's own reader sees them, payload bytes as written.
QList<ParsedCue> readBack(const QString &vtt)
{
    QTemporaryFile file(QDir::tempPath() + QStringLiteral("/XXXXXX.vtt"));
    EXPECT_TRUE(file.open());
    file.write(vtt.toUtf8());
    file.close();
    QProcess probe;
    probe.start(QStringLiteral("ffprobe"), {"-v", "error", "-of", "json", "-show_packets", "-show_data", file.fileName()});
    EXPECT_TRUE(probe.waitForFinished(30000));
    EXPECT_EQ(probe.exitCode(), 0) << probe.readAllStandardError().toStdString();
    // A hex dump: "00000000: 3c76 2044 ...  <v D..." per 16 bytes.
    const auto bytes = [](const QString &dump) {
        QByteArray out;
        for (const QString &line : dump.split(u'\n', Qt::SkipEmptyParts))
            out += QByteArray::fromHex(line.mid(10, 40).remove(u' ').toLatin1());
        return out;
    };
    QList<ParsedCue> cues;
    for (const QJsonValue &p : QJsonDocument::fromJson(probe.readAllStandardOutput())["packets"].toArray()) {
        ParsedCue cue{{}, p["pts"].toInteger(), p["duration"].toInteger(), QString::fromUtf8(bytes(p["data"].toString()))};
        for (const QJsonValue &side : p["side_data_list"].toArray()) {
            if (side["side_data_type"] == QStringLiteral("WebVTT ID"))
                cue.id = QString::fromUtf8(bytes(side["data"].toString()));
        }
        cues << cue;
    }
    return cues;
}

} // namespace

TEST(TextForms, WebVttReadsBackWithVoicesEscapesAndLongStamps)
{
    QList<Cue> cues = TextForms::cues(result({{0, 1500, " Guten Tag & <hallo>"}, {1500, 3725250, ""},
                                              {3725250, 3726000, "Zwei\n\nZeilen"}}));
    cues[0].speaker = QStringLiteral("Dr. <Miller>");
    const QString vtt = TextForms::vtt(cues);
    EXPECT_TRUE(vtt.startsWith(QStringLiteral("WEBVTT\n\n1\n00:00:00.000 --> 00:00:01.500\n")));
    EXPECT_EQ(readBack(vtt), (QList<ParsedCue>{{"1", 0, 1500, "<v Dr. &lt;Miller&gt;> Guten Tag &amp; &lt;hallo&gt;"},
                                               {"2", 1500, 3723750, ""},
                                               {"3", 3725250, 750, "Zwei\nZeilen"}}));
    EXPECT_EQ(TextForms::vtt({}), QStringLiteral("WEBVTT\n"));
}
