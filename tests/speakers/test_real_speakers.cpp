// Real speaker separation: the converted models fetched the way a user's first speaker job
// fetches them (from a release host played on 127.0.0.1), then the real sherpa-diarize,
// found where the build tree puts it, on a recorded telephone conversation, on three real
// voices taking turns and on a synthetic two-voice dialogue, each with a known truth. Exits 77 only when the models
// cannot be made.
#include "Home.h"
#include "LocalServer.h"

#include "speakers/DiarizationModels.h"
#include "speakers/Diarizer.h"
#include "review/SpeakerTurn.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
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
QString conversation; // the recorded conversation's folder; empty when it could not be had
QString threeVoices;  // the three real voices' WAV, its truth beside it; empty when not made
DiarizationModels::Paths models;

struct Turn {
    double start, end;
    int speaker;
    QString text;
};

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The turns written beside a made recording (the dialogue's by default).
QList<Turn> truth(const QString &wav = dialogue)
{
    QList<Turn> turns;
    QFile file(QFileInfo(wav).dir().filePath(QStringLiteral("truth.txt")));
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

// The conversation's truth: who speaks when (RTTM), and the words of each utterance with
// its time (STM); speakers numbered by first appearance.
QList<Turn> conversationTurns(const QString &name)
{
    QList<Turn> turns;
    QStringList names;
    const bool rttm = name.endsWith(QStringLiteral(".rttm"));
    for (const QByteArray &line : readAll(conversation + u'/' + name).split('\n')) {
        const QList<QByteArray> p = line.simplified().split(' ');
        if (p.size() < (rttm ? 8 : 5))
            continue;
        const QString who = QString::fromUtf8(rttm ? p[7] : p[2]);
        if (!names.contains(who))
            names << who;
        const double start = (rttm ? p[3] : p[3]).toDouble();
        const double end = rttm ? start + p[4].toDouble() : p[4].toDouble();
        turns.append({start, end, int(names.indexOf(who)), rttm ? QString() : QString::fromUtf8(p.mid(5).join(' '))});
    }
    return turns;
}

// Segments as the speech engine might cut them: `perSegment` utterances each, whoever
// speaks them, every word spread evenly over its utterance. `owners` gets the true
// speaker of each word in order.
QList<TranscriptSegment> segmentsOver(const QList<Turn> &turns, int perSegment, QList<int> &owners)
{
    QList<TranscriptSegment> segments;
    for (qsizetype i = 0; i < turns.size(); i += perSegment) {
        TranscriptSegment s{.startMs = qint64(turns[i].start * 1000), .endMs = 0, .text = {}, .words = {}};
        QStringList texts;
        for (qsizetype j = i; j < std::min(turns.size(), i + perSegment); ++j) {
            const Turn &t = turns[j];
            const QStringList words = t.text.split(u' ', Qt::SkipEmptyParts);
            const qint64 from = qint64(t.start * 1000), each = (qint64(t.end * 1000) - from) / words.size();
            for (qsizetype w = 0; w < words.size(); ++w) {
                s.words.append({words[w], from + w * each, from + (w + 1) * each});
                owners << t.speaker;
            }
            texts << t.text;
            s.endMs = qint64(t.end * 1000);
        }
        s.text = u' ' + texts.join(u' ');
        segments.append(s);
    }
    return segments;
}

// The share of words that the labelled text puts under their true speaker, under the
// mapping of labels to speakers that agrees best with the majority of each label.
double rightWords(const QString &labelled, const QList<int> &owners)
{
    QList<QString> labelOf;
    for (const QString &line : labelled.split(u'\n', Qt::SkipEmptyParts)) {
        const auto [label, content] = SpeakerTurn::splitLabel(line);
        for (qsizetype i = 0; i < content.split(u' ', Qt::SkipEmptyParts).size(); ++i)
            labelOf << label.value_or(QString());
    }
    if (labelOf.size() != owners.size())
        return 0;
    QMap<QString, QMap<int, int>> votes;
    for (qsizetype i = 0; i < owners.size(); ++i)
        ++votes[labelOf[i]][owners[i]];
    int right = 0;
    for (const QMap<int, int> &v : std::as_const(votes))
        right += *std::max_element(v.cbegin(), v.cend());
    return double(right) / double(owners.size());
}

// A 16 kHz 16-bit mono WAV file made of the given stretches (seconds) of another.
void cutWav(const QString &from, const QString &to, const QList<std::pair<double, double>> &stretches)
{
    const QByteArray in = readAll(from);
    const qsizetype data = in.indexOf("data", 12) + 8; // the samples follow the data chunk's head
    ASSERT_GE(data, 8);
    QByteArray samples;
    for (const auto &[a, b] : stretches)
        samples += in.mid(data + qsizetype(a * 16000) * 2, qsizetype((b - a) * 16000) * 2);
    QByteArray head = in.left(data);
    const auto put = [&](qsizetype at, quint32 v) {
        for (int i = 0; i < 4; ++i)
            head[at + i] = char((v >> (8 * i)) & 0xff);
    };
    put(4, quint32(head.size() - 8 + samples.size()));
    put(data - 4, quint32(samples.size()));
    QFile out(to);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(head + samples);
}

int speakers(const QList<SpeakerSpan> &spans)
{
    QSet<int> set;
    for (const SpeakerSpan &s : spans)
        set.insert(s.speaker);
    return int(set.size());
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

    // The program in ../lib/sagwerk/, as the build tree and the installed layout have it.
    ASSERT_EQ(Diarizer::cliPath(),
              QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/sagwerk/sherpa-diarize")));

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

    // The speaker text over the true turns, each with its words spread evenly over its
    // time (so a word at a turn's edge may fall just outside the voice's span): the words
    // under their speakers.
    QList<int> owners;
    const QList<TranscriptSegment> segments = segmentsOver(turns, 1, owners);
    const double right = rightWords(Diarizer::speakerLabeledText(segments, two), owners);
    std::printf("two speakers: %.1f %% of %lld words under the right speaker\n", 100 * right, qlonglong(owners.size()));
    EXPECT_GE(right, 0.90);

    // Automatic mode, as a speaker job runs it: the two voices, nearly as well.
    const QList<SpeakerSpan> automatic = diarize(0.9, 0);
    const Errors a = diarizationErrors(turns, automatic);
    std::printf("automatic: %d speakers, DER %.1f %%\n", speakers(automatic), 100 * a.rate());
    EXPECT_EQ(speakers(automatic), 2);
    EXPECT_LE(a.rate(), 0.15);
    qunsetenv("SAGWERK_SPEAKER_MODEL_HOST");
    models = paths;
}

TEST(RealSpeakers, RecordedConversationInAutomaticMode)
{
    if (conversation.isEmpty())
        GTEST_SKIP() << "the recorded conversation could not be fetched";
    ASSERT_FALSE(models.seg.isEmpty()) << "runs after the models were fetched";
    auto diarize = [&](const QString &wav) {
        return std::async(std::launch::async, [=] {
            return Diarizer::diarize(wav, models.seg, models.emb, Diarizer::defaultThreshold, 0);
        }).get();
    };

    // Two people on the telephone: both found, and who speaks when.
    const QList<SpeakerSpan> spans = diarize(conversation + QStringLiteral("/sample.wav"));
    const Errors e = diarizationErrors(conversationTurns(QStringLiteral("sample.rttm")), spans);
    std::printf("conversation, automatic: %d speakers, DER %.1f %% (missed %.2f s, false alarm %.2f s, "
                "confusion %.2f s of %.2f s)\n",
                speakers(spans), 100 * e.rate(), e.missed, e.falseAlarm, e.confusion, e.speech);
    EXPECT_EQ(speakers(spans), 2);
    EXPECT_LE(e.rate(), 0.15);

    // Segments of two utterances each hold both voices more often than not; the labelled
    // text still puts the words under the one who said them.
    const QList<Turn> said = conversationTurns(QStringLiteral("sample.stm"));
    ASSERT_EQ(said.size(), 13);
    for (int perSegment : {1, 2}) {
        QList<int> owners;
        const QList<TranscriptSegment> segments = segmentsOver(said, perSegment, owners);
        const double right = rightWords(Diarizer::speakerLabeledText(segments, spans), owners);
        std::printf("conversation, %d utterance(s) per segment: %.1f %% of %lld words under the right speaker\n",
                    perSegment, 100 * right, qlonglong(owners.size()));
        EXPECT_GE(right, 0.90) << perSegment;
    }

    // Each voice by itself is one speaker.
    const QString one = workDir + QStringLiteral("/one.wav");
    for (const QList<std::pair<double, double>> &voice :
         {QList<std::pair<double, double>>{{8.32, 9.90}, {11.05, 14.45}, {18.60, 21.49}, {28.52, 30.0}},
          QList<std::pair<double, double>>{{7.55, 8.32}, {14.72, 17.92}, {21.78, 27.83}}}) {
        cutWav(conversation + QStringLiteral("/sample.wav"), one, voice);
        EXPECT_EQ(speakers(diarize(one)), 1);
    }
}

// Three real people: the telephone call's two women and a LibriVox reader heard through
// the same narrow band. Automatic mode must tell all three apart.
TEST(RealSpeakers, ThreeRealVoicesInAutomaticMode)
{
    if (threeVoices.isEmpty())
        GTEST_SKIP() << "the recorded conversation or pocketsphinx's recordings could not be had";
    ASSERT_FALSE(models.seg.isEmpty()) << "runs after the models were fetched";
    const QList<SpeakerSpan> spans = std::async(std::launch::async, [] {
        return Diarizer::diarize(threeVoices, models.seg, models.emb, Diarizer::defaultThreshold, 0);
    }).get();
    const QList<Turn> turns = truth(threeVoices);
    ASSERT_EQ(turns.size(), 18);
    const Errors e = diarizationErrors(turns, spans);
    std::printf("three voices, automatic: %d speakers, DER %.1f %% (missed %.2f s, false alarm %.2f s, "
                "confusion %.2f s of %.2f s)\n",
                speakers(spans), 100 * e.rate(), e.missed, e.falseAlarm, e.confusion, e.speech);
    EXPECT_EQ(speakers(spans), 3);
    EXPECT_LE(e.rate(), 0.15);
    QList<int> owners;
    const QList<TranscriptSegment> segments = segmentsOver(turns, 2, owners);
    const double right = rightWords(Diarizer::speakerLabeledText(segments, spans), owners);
    std::printf("three voices, 2 turns per segment: %.1f %% of %lld words under the right speaker\n", 100 * right,
                qlonglong(owners.size()));
    EXPECT_GE(right, 0.90);
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

    QProcess fetch;
    fetch.start(QStringLiteral(FETCH_CONVERSATION), {});
    fetch.waitForFinished(-1);
    if (fetch.exitStatus() == QProcess::NormalExit && fetch.exitCode() == 0)
        conversation = QString::fromLocal8Bit(fetch.readAllStandardOutput().trimmed());
    else
        std::printf("no recorded conversation: %s", fetch.readAllStandardError().constData());

    if (!conversation.isEmpty()) {
        QProcess three;
        three.start(QStringLiteral(MAKE_THREE_VOICES), {conversation, workDir + QStringLiteral("/three")});
        three.waitForFinished(-1);
        if (three.exitStatus() == QProcess::NormalExit && three.exitCode() == 0)
            threeVoices = QString::fromLocal8Bit(three.readAllStandardOutput().trimmed());
        else if (three.exitStatus() == QProcess::NormalExit && three.exitCode() == 77)
            std::printf("no three voices: %s", three.readAllStandardError().constData());
        else {
            std::fprintf(stderr, "making the three voices failed: %s", three.readAllStandardError().constData());
            return 1;
        }
    }
    return RUN_ALL_TESTS();
}
