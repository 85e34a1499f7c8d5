// Real speaker separation: the converted models fetched the way a user's first speaker job
// fetches them (from a release host played on 127.0.0.1), then the real sherpa-diarize,
// found where the installed layout puts it, on a two-voice dialogue with a known truth.
// Exits 77 only when the models cannot be made.
#include "Home.h"
#include "LocalServer.h"

#include "speakers/DiarizationModels.h"
#include "speakers/Diarizer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSet>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <future>
#include <numeric>

namespace {

QString workDir;   // this run's own folder
QString modelDir;  // the converted models
QString dialogue;  // the dialogue's WAV; its truth beside it

struct Turn {
    double start, end;
    int speaker;
    QString text;
};

QList<Turn> truth()
{
    QList<Turn> turns;
    QFile file(QFileInfo(dialogue).dir().filePath(QStringLiteral("truth.txt")));
    if (!file.open(QIODevice::ReadOnly))
        return turns;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> p = line.split(' ');
        if (p.size() >= 4)
            turns.append({p[0].toDouble(), p[1].toDouble(), p[2].toInt(),
                          QString::fromUtf8(line.mid(p[0].size() + p[1].size() + p[2].size() + 3))});
    }
    return turns;
}

struct Errors {
    double missed = 0, falseAlarm = 0, confusion = 0, speech = 0;
    double rate() const { return speech > 0 ? (missed + falseAlarm + confusion) / speech : 0; }
};

// Diarisation error rate on a 10 ms grid: missed speech, false alarm and confusion over
// the truth's speech, under the mapping of found to true speakers that agrees best.
// Frames within `collar` seconds of a true turn's edge are not scored.
Errors diarizationErrors(const QList<Turn> &ref, const QList<SpeakerSpan> &hyp, double collar = 0.25)
{
    constexpr double step = 0.01;
    double length = 0;
    for (const Turn &t : ref)
        length = std::max(length, t.end);
    for (const SpeakerSpan &s : hyp)
        length = std::max(length, s.end);
    QList<int> found;
    for (const SpeakerSpan &s : hyp)
        if (!found.contains(s.speaker))
            found.append(s.speaker);
    const int refCount = int(std::ranges::max(ref, {}, &Turn::speaker).speaker) + 1;

    struct Frame {
        int ref = -1;        // the true speaker, -1 for silence (turns do not overlap here)
        QList<int> hyp;      // indices into `found`
    };
    QList<Frame> frames;
    for (double t = step / 2; t < length; t += step) {
        bool nearEdge = false;
        Frame f;
        for (const Turn &turn : ref) {
            nearEdge = nearEdge || std::abs(t - turn.start) < collar || std::abs(t - turn.end) < collar;
            if (t >= turn.start && t < turn.end)
                f.ref = turn.speaker;
        }
        if (nearEdge)
            continue;
        for (const SpeakerSpan &s : hyp)
            if (t >= s.start && t < s.end && !f.hyp.contains(found.indexOf(s.speaker)))
                f.hyp.append(int(found.indexOf(s.speaker)));
        frames.append(f);
    }

    // Every mapping of found speakers onto true ones (or onto none), the best one counts.
    const int places = std::max(int(found.size()), refCount);
    std::vector<int> mapping(static_cast<size_t>(places));
    std::iota(mapping.begin(), mapping.end(), 0);
    Errors best;
    bool first = true;
    do {
        Errors e;
        for (const Frame &f : frames) {
            const int n = int(f.hyp.size());
            if (f.ref >= 0)
                e.speech += step;
            if (f.ref >= 0 && n == 0)
                e.missed += step;
            else if (f.ref < 0)
                e.falseAlarm += n * step;
            else {
                const bool right = std::ranges::any_of(f.hyp, [&](int h) { return mapping[size_t(h)] == f.ref; });
                e.confusion += right ? 0 : step;
                e.falseAlarm += (n - 1) * step;
            }
        }
        if (first || e.rate() < best.rate())
            best = e;
        first = false;
    } while (std::next_permutation(mapping.begin(), mapping.end()));
    return best;
}

int speakers(const QList<SpeakerSpan> &spans)
{
    QSet<int> set;
    for (const SpeakerSpan &s : spans)
        set.insert(s.speaker);
    return int(set.size());
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The segmentation model as the release ships it: a bzip2 tar archive of its folder.
QByteArray segmentationArchive()
{
    const QString folder = workDir + QStringLiteral("/archive/sherpa-onnx-pyannote-segmentation-3-0");
    QDir().mkpath(folder);
    QFile::remove(folder + QStringLiteral("/model.onnx"));
    QFile::copy(modelDir + QStringLiteral("/segmentation.onnx"), folder + QStringLiteral("/model.onnx"));
    QProcess tar;
    tar.start(QStringLiteral("/usr/bin/tar"), {"cjf", workDir + "/seg.tar.bz2", "-C", workDir + "/archive",
                                               "sherpa-onnx-pyannote-segmentation-3-0"});
    tar.waitForFinished(-1);
    return readAll(workDir + QStringLiteral("/seg.tar.bz2"));
}

} // namespace

TEST(RealSpeakers, FetchedModelsSeparateTwoVoices)
{
    LocalServer server;
    server.answer(QStringLiteral("/k2-fsa/sherpa-onnx/releases/download/speaker-segmentation-models/"
                                 "sherpa-onnx-pyannote-segmentation-3-0.tar.bz2"),
                  {.body = segmentationArchive()});
    server.answer(QStringLiteral("/k2-fsa/sherpa-onnx/releases/download/speaker-recongition-models/"
                                 "3dspeaker_speech_campplus_sv_en_voxceleb_16k.onnx"),
                  {.body = readAll(modelDir + QStringLiteral("/embedding.onnx"))});
    useThrowawayHome();
    qputenv("SAGWERK_SPEAKER_MODEL_HOST", server.base().toString().toUtf8());

    QStringList statuses;
    QFuture<DiarizationModels::Paths> ensured =
        DiarizationModels::ensure([&](const QString &s) { statuses << s; });
    ASSERT_TRUE(waitFor([&] { return ensured.isFinished(); }, 120'000));
    const DiarizationModels::Paths paths = ensured.result();
    EXPECT_EQ(statuses.size(), 1);
    EXPECT_EQ(readAll(paths.seg), readAll(modelDir + QStringLiteral("/segmentation.onnx")));
    EXPECT_EQ(readAll(paths.emb), readAll(modelDir + QStringLiteral("/embedding.onnx")));

    // The program beside this binary, as beside the installed application.
    ASSERT_EQ(Diarizer::cliURL(), QCoreApplication::applicationDirPath() + QStringLiteral("/sherpa-diarize"));

    const QList<Turn> turns = truth();
    ASSERT_EQ(turns.size(), 8);
    auto diarize = [&](double threshold, int clusters) {
        return std::async(std::launch::async, [=] {
            return Diarizer::diarize(dialogue, paths.seg, paths.emb, threshold, clusters);
        }).get();
    };

    const QList<SpeakerSpan> two = diarize(0.5, 2);
    const Errors e = diarizationErrors(turns, two);
    std::printf("two speakers: DER %.1f %% (missed %.2f s, false alarm %.2f s, confusion %.2f s of %.2f s)\n",
                100 * e.rate(), e.missed, e.falseAlarm, e.confusion, e.speech);
    EXPECT_EQ(speakers(two), 2);
    EXPECT_LE(e.rate(), 0.10);

    // The speaker text over the true turns, each with its words spread over its time: one
    // line per turn, the speakers alternating as they do in the dialogue.
    QList<TranscriptSegment> segments;
    for (const Turn &t : turns) {
        TranscriptSegment s{.startMs = qint64(t.start * 1000), .endMs = qint64(t.end * 1000), .text = t.text, .words = {}};
        const QStringList words = t.text.split(u' ');
        const qint64 each = (s.endMs - s.startMs) / words.size();
        for (qsizetype i = 0; i < words.size(); ++i)
            s.words.append({words[i], s.startMs + i * each, s.startMs + (i + 1) * each});
        segments.append(s);
    }
    const QStringList lines = Diarizer::speakerLabeledText(segments, two).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), turns.size()) << lines.join(u'\n').toStdString();
    for (qsizetype i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i], QStringLiteral("Sprecher %1: %2").arg(turns[i].speaker + 1).arg(turns[i].text));

    // Automatic mode: how many speakers the threshold finds is reported, not asserted.
    const QList<SpeakerSpan> automatic = diarize(0.9, 0);
    const Errors a = diarizationErrors(turns, automatic);
    std::printf("automatic (threshold 0.9): %d speakers, DER %.1f %%\n", speakers(automatic), 100 * a.rate());
    qunsetenv("SAGWERK_SPEAKER_MODEL_HOST");
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    workDir = QString::fromLocal8Bit(qgetenv("SAGWERK_TEST_TMP"));
    if (workDir.isEmpty())
        workDir = QDir::tempPath() + QStringLiteral("/sagwerk-real-speakers");
    QDir(workDir).removeRecursively();
    QDir().mkpath(workDir);

    // Before the throw-away home: the models are cached in the real one.
    QProcess make;
    make.start(QStringLiteral(MAKE_MODELS), {});
    make.waitForFinished(-1);
    const QByteArray message = make.readAllStandardError();
    if (make.exitStatus() == QProcess::NormalExit && make.exitCode() == 77) {
        std::printf("skipped: %s", message.constData());
        return 77;
    }
    if (make.exitStatus() != QProcess::NormalExit || make.exitCode() != 0) {
        std::fprintf(stderr, "making the speaker models failed: %s", message.constData());
        return 1;
    }
    modelDir = QString::fromLocal8Bit(make.readAllStandardOutput().trimmed());

    QProcess speak;
    speak.start(QStringLiteral(MAKE_DIALOGUE), {workDir + QStringLiteral("/dialogue")});
    speak.waitForFinished(-1);
    if (speak.exitStatus() != QProcess::NormalExit || speak.exitCode() != 0) {
        std::fprintf(stderr, "making the dialogue failed: %s", speak.readAllStandardError().constData());
        return 1;
    }
    dialogue = workDir + QStringLiteral("/dialogue/dialogue.wav");
    return RUN_ALL_TESTS();
}
