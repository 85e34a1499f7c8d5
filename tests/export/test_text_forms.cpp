// Stamp arithmetic of the two text forms, and the date.
#include "export/Format.h"
#include "export/TextForms.h"

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
    const TranscriptionResult r = result({{-5, 3599999, "Eins"}, {3600000, 363599999, ""}, {1500, 1000, "Drei"}});
    EXPECT_EQ(TextForms::srt(r), QStringLiteral("1\n00:00:00,000 --> 00:59:59,999\nEins\n\n"
                                                "2\n01:00:00,000 --> 100:59:59,999\n\n\n"
                                                "3\n00:00:01,500 --> 00:00:01,000\nDrei\n"));
    EXPECT_EQ(TextForms::srt(result({})), QString());
}
