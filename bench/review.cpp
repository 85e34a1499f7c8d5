// bench-review [ROUNDS]: the transcript text view over a generated three-hour transcript
// (2,000 segments, 30,000 words): a rebuild, a refresh with an unchanged key (the 30 ms
// tick of playback), and the corrections over all lines with ten rules. A plain
// QTextDocument::setPlainText of the same text in the same kind of surface is the reference.
#include "Transcripts.h"

#include "review/Corrections.h"
#include "review/TranscriptLayout.h"
#include "review/TranscriptLines.h"
#include "ui/TranscriptTextView.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double percentile(std::vector<double> v, double p)
{
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, size_t(p * double(v.size())))];
}

double ms(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

Correction rule(const char *from, const char *to, bool caseSensitive, bool wholeWord)
{
    return Correction{QUuid::createUuid(), QString::fromUtf8(from), QString::fromUtf8(to), caseSensitive, wholeWord};
}

// Waits until the surface has laid out the whole document.
void finishLayout(QTextEdit &surface)
{
    surface.document()->documentLayout()->documentSize();
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 5;

    HistoryItem item = Transcripts::item(Transcripts::result(2000, 15));
    item.corrections = {rule("Schäfer", "Schaefer", true, true),  rule("Wasserrad", "Mühlrad", false, false),
                        rule("Großvater", "Opa", false, true),    rule("Jahrzehnte", "Jahre", false, false),
                        rule("Mehl", "Mehl", true, true),         rule("Herr", "Herrn", true, true),
                        rule("Fluss", "Bach", false, true),       rule("neunzehn", "19", false, false),
                        rule("Windmühle", "Mühle", false, false), rule("ÜBER", "über", true, false)};
    qsizetype words = 0;
    for (const TranscriptSegment &s : item.result.segments)
        words += s.words.size();
    const QList<TranscriptLine> lines = TranscriptLines::originalLines(item.result);
    const QString text = TranscriptLayout::build(lines, true, item.corrections).text;
    const double hours = double(item.result.segments.constLast().endMs) / 3.6e6;
    std::printf("review  transcript of %.1f h: %lld segments, %lld words, %lld characters, %lld rules\n", hours,
                qlonglong(item.result.segments.size()), qlonglong(words), qlonglong(text.size()),
                qlonglong(item.corrections.size()));

    TranscriptTextView view;
    QTextEdit reference;
    for (QTextEdit *surface : {static_cast<QTextEdit *>(&view), &reference}) {
        surface->resize(1000, 700);
        surface->show();
    }
    QCoreApplication::processEvents();
    QObject::connect(view.document(), &QTextDocument::contentsChange, [&](int a, int b, int c) { qDebug() << "change" << a << b << c << view.document()->characterCount(); });

    qint64 currentMs = 0;
    bool playing = false;
    auto inputs = [&](const QString &key) {
        TranscriptDocument::View v;
        v.lines = [&] { return TranscriptLines::originalLines(item.result); };
        v.showTime = true;
        v.currentMs = currentMs;
        v.isPlaying = playing;
        v.rebuildKey = key;
        v.corrections = item.corrections;
        v.onSeek = [](qint64, bool) {};
        v.onCreateCorrection = [](const QString &) {};
        v.onSelectionText = [](const QString &) {};
        return v;
    };

    // Rebuilds: the call (what blocks the screen) and until the whole layout is done;
    // the same for setPlainText, rounds interleaved.
    std::vector<double> rebuild, rebuildLaidOut, plain, plainLaidOut;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer t;
        t.start();
        view.refresh(inputs(QStringLiteral("key-%1-").arg(i) + TranscriptLines::rebuildKey(item, true)));
        rebuild.push_back(ms(t));
        finishLayout(view);
        rebuildLaidOut.push_back(ms(t));

        t.start();
        reference.document()->setPlainText(text);
        plain.push_back(ms(t));
        finishLayout(reference);
        plainLaidOut.push_back(ms(t));
        QCoreApplication::processEvents();
    }
    std::printf("review  rebuild %.1f ms (laid out %.1f ms), setPlainText %.1f ms (laid out %.1f ms), "
                "ratio %.2f (goal: rebuild <= 150 ms)\n",
                median(rebuild), median(rebuildLaidOut), median(plain), median(plainLaidOut),
                median(rebuild) / median(plain));

    // Refreshes with an unchanged key, as the player ticks every 30 ms while playing: ten
    // minutes of playback each at the start, the middle and the end of the transcript,
    // so that the walk over the words is short, medium and long. The screen paints
    // between ticks, untimed. Ticks that move the cursor to the next word (and may
    // scroll) are counted apart from those that leave it where it is.
    const QString key = QStringLiteral("steady|") + TranscriptLines::rebuildKey(item, true);
    view.refresh(inputs(key));
    finishLayout(view);
    playing = true;
    std::vector<double> steady, moved;
    const qint64 end = item.result.segments.constLast().endMs;
    for (qint64 start : {qint64(0), end / 2, end - 600000}) {
        for (qint64 now = start; now < start + 600000; now += 30) {
            currentMs = now;
            const auto before = view.transcriptDocument().highlighted();
            QElapsedTimer t;
            t.start();
            view.refresh(inputs(QStringLiteral("steady|") + TranscriptLines::rebuildKey(item, true)));
            const double took = ms(t);
            (view.transcriptDocument().highlighted() == before ? steady : moved).push_back(took);
            QCoreApplication::processEvents();
        }
    }
    auto mean = [](const std::vector<double> &v) {
        double sum = 0;
        for (double d : v)
            sum += d;
        return sum / double(v.size());
    };
    std::printf("review  refresh, unchanged key, same word: mean %.4f ms, 99th percentile %.4f ms over %zu ticks "
                "(goal <= 0.2 ms)\n",
                mean(steady), percentile(steady, 0.99), steady.size());
    std::printf("review  refresh, unchanged key, next word: mean %.4f ms, 99th percentile %.4f ms over %zu ticks\n",
                mean(moved), percentile(moved, 0.99), moved.size());

    // The corrections as the rebuild runs them: each line once.
    std::vector<double> corrections;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer t;
        t.start();
        qsizetype replaced = 0;
        for (const TranscriptSegment &s : item.result.segments)
            replaced += Corrections::apply(item.corrections, s.text).ranges.size();
        corrections.push_back(ms(t));
        if (replaced == 0)
            std::fprintf(stderr, "no rule matched\n");
    }
    std::printf("review  Corrections::apply over %lld lines with %lld rules: %.1f ms (goal <= 50 ms)\n",
                qlonglong(item.result.segments.size()), qlonglong(item.corrections.size()), median(corrections));
    return 0;
}
