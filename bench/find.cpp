// bench-find [ROUNDS]: finding while typing in the text view over a generated transcript of
// about 3.6 hours. Per key: TextFind over the laid-out text, the marks of the matches, the
// current one scrolled into view and the view painted, as the result screen does; beside it
// QTextDocument::find, case-blind, counting every match of the same query in the same
// document (Qt's own find, which folds no accents). Goal: each key <= 50 ms.
#include "Transcripts.h"

#include "review/TextFind.h"
#include "review/TranscriptLines.h"
#include "ui/TranscriptTextView.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QElapsedTimer>
#include <QTextBlock>

#include <algorithm>
#include <numeric>
#include <cstdio>
#include <vector>

namespace {

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double ms(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 3;

    const HistoryItem item = Transcripts::item(Transcripts::result(2000, 15));
    TranscriptTextView view;
    view.resize(1000, 700);
    view.show();
    TranscriptDocument::View inputs;
    inputs.lines = [&] { return TranscriptLines::originalLines(item.result); };
    inputs.rebuildKey = TranscriptLines::rebuildKey(item, true);
    view.refresh(inputs);
    view.document()->documentLayout()->documentSize();
    QCoreApplication::processEvents();
    const QString text = view.document()->toPlainText();
    std::printf("find    transcript of %.1f h: %lld segments, %lld characters\n",
                double(item.result.segments.constLast().endMs) / 3.6e6, qlonglong(item.result.segments.size()),
                qlonglong(text.size()));

    QElapsedTimer t;
    t.start();
    const TextFind find(text);
    std::printf("find    folding the text once, when the bar opens or the text changes: %.1f ms\n", ms(t));

    QTextCharFormat all, current;
    all.setBackground(QColor(230, 170, 0, 90));
    current.setBackground(QColor(196, 98, 0, 190));
    std::vector<double> ours, reference;
    double phase[4] = {0, 0, 0, 0};
    qsizetype worstMatches = 0;
    for (int round = 0; round < rounds; ++round) {
        for (const QString &word : {QStringLiteral("wasserrad"), QStringLiteral("großvater"), QStringLiteral("mühle")}) {
            for (qsizetype typed = 1; typed <= word.size(); ++typed) {
                const QString query = word.left(typed);
                t.start();
                const QList<Corrections::Range> matches = find.find(query);
                const double found = ms(t);
                // The screen marks at most 300 matches, those around the current one.
                QList<QTextEdit::ExtraSelection> marks;
                for (qsizetype i = 0; i < std::min<qsizetype>(matches.size(), 300); ++i) {
                    QTextEdit::ExtraSelection s;
                    s.cursor = QTextCursor(view.document());
                    s.cursor.setPosition(int(matches[i].start));
                    s.cursor.setPosition(int(matches[i].end), QTextCursor::KeepAnchor);
                    s.format = i == 0 ? current : all;
                    marks << s;
                }
                const double made = ms(t);
                view.setFindMarks(marks);
                const double set = ms(t);
                if (!matches.isEmpty())
                    view.scrollRangeToVisible(matches[0].start, matches[0].end - matches[0].start);
                const double scrolled = ms(t);
                view.repaint();
                ours.push_back(ms(t));
                phase[0] += found;
                phase[1] += made;
                phase[2] += set;
                phase[3] += scrolled;
                worstMatches = std::max(worstMatches, matches.size());

                t.start();
                qsizetype count = 0;
                for (QTextCursor c = view.document()->find(query); !c.isNull(); c = view.document()->find(query, c))
                    ++count;
                view.repaint();
                reference.push_back(ms(t));
            }
        }
    }
    view.setFindMarks({});
    std::printf("find    per key (%zu keys, up to %lld matches): median %.2f ms, worst %.2f ms; "
                "QTextDocument::find median %.2f ms, worst %.2f ms; ratio %.2f (goal: worst key <= 50 ms)\n",
                ours.size(), qlonglong(worstMatches), median(ours), *std::max_element(ours.begin(), ours.end()),
                median(reference), *std::max_element(reference.begin(), reference.end()),
                median(ours) / median(reference));
    std::printf("find    where the time goes, over all keys: finding %.0f ms, making marks %.0f ms, setting them "
                "%.0f ms, scrolling %.0f ms, painting %.0f ms\n",
                phase[0], phase[1] - phase[0], phase[2] - phase[1], phase[3] - phase[2],
                std::accumulate(ours.begin(), ours.end(), 0.0) - phase[3]);
    return 0;
}
