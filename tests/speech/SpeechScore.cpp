#include "SpeechScore.h"

#include "engine/Decoder.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <random>

namespace SpeechScore {

QStringList words(const QString &text)
{
    QString s = text.toLower();
    s.replace(QRegularExpression(QStringLiteral("[-–—/]")), QStringLiteral(" "));
    s.remove(QRegularExpression(QStringLiteral("[^\\w\\s]")));
    return s.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
}

int errors(const QStringList &reference, const QStringList &hypothesis)
{
    std::vector<int> row(size_t(hypothesis.size()) + 1);
    for (size_t j = 0; j < row.size(); ++j)
        row[j] = int(j);
    for (qsizetype i = 1; i <= reference.size(); ++i) {
        int diagonal = row[0];
        row[0] = int(i);
        for (qsizetype j = 1; j <= hypothesis.size(); ++j) {
            const int above = row[size_t(j)];
            row[size_t(j)] = std::min({above + 1, row[size_t(j - 1)] + 1,
                                       diagonal + (reference[i - 1] == hypothesis[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row.back();
}

namespace {

// Sorts and merges overlapping stretches; marks onsets after a pause of `pause` or more.
void settle(Recording &r, QList<Region> regions, double pause)
{
    std::sort(regions.begin(), regions.end(), [](const Region &a, const Region &b) { return a.start < b.start; });
    for (const Region &region : regions) {
        if (!r.speech.isEmpty() && region.start <= r.speech.last().end) {
            r.speech.last().end = std::max(r.speech.last().end, region.end);
            continue;
        }
        if (r.speech.isEmpty() || region.start - r.speech.last().end >= pause)
            r.onsets << region.start;
        r.speech << region;
    }
}

// Where speech starts and ends in one recording: the first and last 10 ms frame within
// 25 dB of its loudest frame.
Region loudStretch(const std::vector<float> &samples)
{
    constexpr size_t frame = 160;
    std::vector<double> energy;
    for (size_t at = 0; at + frame <= samples.size(); at += frame) {
        double e = 0;
        for (size_t i = at; i < at + frame; ++i)
            e += double(samples[i]) * samples[i];
        energy.push_back(e / frame);
    }
    const double loudest = *std::max_element(energy.begin(), energy.end());
    const double floor = loudest * std::pow(10.0, -25.0 / 10.0);
    size_t first = 0, last = energy.size() - 1;
    while (first < energy.size() && energy[first] < floor)
        ++first;
    while (last > first && energy[last] < floor)
        --last;
    return {first * 0.01, (last + 1) * 0.01};
}

} // namespace

Recording fromRttm(const QString &name, const QString &wav, const QString &rttm, double pause)
{
    Recording r;
    r.name = name;
    r.samples = Decoder::decodeTo16kMonoFloats(wav);
    QFile file(rttm);
    QList<Region> regions;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : file.readAll().split('\n')) {
            const QList<QByteArray> f = line.simplified().split(' ');
            if (f.size() >= 5 && f[0] == "SPEAKER")
                regions << Region{f[3].toDouble(), f[3].toDouble() + f[4].toDouble()};
        }
    }
    settle(r, regions, pause);
    return r;
}

Recording joinedLibriVox()
{
    Recording r;
    r.name = QStringLiteral("LibriVox x5, joined with pauses");
    const QDir dir(QStringLiteral("/usr/share/pocketsphinx/test/data/librivox"));
    const QStringList files = dir.entryList({QStringLiteral("*.wav")}, QDir::Files, QDir::Name);
    // Seconds of silence before each recording; the last entry is the tail.
    const double gaps[] = {6.7, 3.0, 8.0, 2.0, 5.0, 20.0};
    std::mt19937 noise(7);
    std::normal_distribution<float> hiss(0.0f, 0.001f); // about -60 dBFS
    auto silence = [&](double seconds) {
        for (size_t i = 0; i < size_t(seconds * 16000); ++i)
            r.samples.push_back(hiss(noise));
    };
    QList<Region> regions;
    QStringList reference;
    for (qsizetype i = 0; i < files.size() && i < 5; ++i) {
        silence(gaps[i]);
        const std::vector<float> clip = Decoder::decodeTo16kMonoFloats(dir.filePath(files[i]));
        const double at = double(r.samples.size()) / 16000.0;
        const Region loud = loudStretch(clip);
        regions << Region{at + loud.start, at + loud.end};
        for (float s : clip)
            r.samples.push_back(s + hiss(noise));
        QFile text(dir.filePath(QString(files[i]).replace(QStringLiteral(".wav"), QStringLiteral(".txt"))));
        if (text.open(QIODevice::ReadOnly))
            reference << QString::fromUtf8(text.readAll()).trimmed();
    }
    silence(gaps[5]);
    r.reference = reference.join(u' ');
    settle(r, regions, 0.3);
    return r;
}

Score score(const Recording &recording, const QList<double> &wordStarts, const QString &text)
{
    Score s;
    s.words = int(wordStarts.size());
    QList<double> onsetErrors;
    for (double onset : recording.onsets) {
        double best = 1e9;
        for (double start : wordStarts)
            best = std::min(best, std::abs(start - onset));
        onsetErrors << best;
    }
    std::sort(onsetErrors.begin(), onsetErrors.end());
    if (!onsetErrors.isEmpty()) {
        const qsizetype n = onsetErrors.size();
        s.medianOnsetErrorS = n % 2 ? onsetErrors[n / 2] : (onsetErrors[n / 2 - 1] + onsetErrors[n / 2]) / 2;
        s.worstOnsetErrorS = onsetErrors.last();
    }
    for (double start : wordStarts) {
        const bool inside = std::any_of(recording.speech.begin(), recording.speech.end(), [&](const Region &region) {
            return start >= region.start - 0.3 && start <= region.end + 0.3;
        });
        s.wordsOutsideSpeech += inside ? 0 : 1;
    }
    // A passage written again: a run of six words that stood earlier in the text (and not
    // twice in what was said), counted once per run.
    const QStringList hypothesis = words(text);
    QHash<QString, int> said;
    const QStringList reference = words(recording.reference);
    for (qsizetype i = 0; i + 6 <= reference.size(); ++i)
        ++said[reference.mid(i, 6).join(u' ')];
    QHash<QString, int> seen;
    bool inRun = false;
    for (qsizetype i = 0; i + 6 <= hypothesis.size(); ++i) {
        const QString gram = hypothesis.mid(i, 6).join(u' ');
        const bool again = seen[gram]++ > 0 && said.value(gram) < 2;
        if (again && !inRun)
            ++s.repeatedSentences;
        inRun = again;
    }
    if (!recording.reference.isEmpty()) {
        const QStringList expected = words(recording.reference);
        s.wer = double(errors(expected, words(text))) / double(expected.size());
    }
    return s;
}

Score score(const Recording &recording, const TranscriptionResult &result)
{
    QList<double> starts;
    for (const TranscriptSegment &segment : result.segments)
        for (const TranscriptWord &word : segment.words)
            starts << word.startMs / 1000.0;
    return score(recording, starts, result.fullText);
}

} // namespace SpeechScore
