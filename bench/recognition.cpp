// Recognition set-ups measured on real recordings with leading silence, pauses and a
// silent tail: how far word starts lie from where speech starts, words stamped where
// nobody speaks, sentences written twice, the word error rate where the words are known,
// and the time. whisper-cli runs beside ours with the same settings where its options
// reach them.
//   bench-recognition MODEL VAD_MODEL CONVERSATION_FOLDER [SET-UP...]
#include "SpeechScore.h"

#include "engine/VadModel.h"
#include "engine/WhisperEngine.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

namespace {

struct Candidate {
    const char *name;
    WhisperEngine::Setup setup;
};

// The library's alignment-heads preset of Whisper base (whisper_alignment_heads_preset).
constexpr int kBaseHeads = 6;

void print(const char *program, const char *setup, const SpeechScore::Score &s, double seconds, double audio)
{
    std::printf("  %-12s %-22s onset median %5.2f s  worst %5.2f s  outside %2d/%-3d  repeats %d  WER %s  RTF %.3f\n",
                program, setup, s.medianOnsetErrorS, s.worstOnsetErrorS, s.wordsOutsideSpeech, s.words,
                s.repeatedSentences, s.wer < 0 ? "  -   " : qPrintable(QStringLiteral("%1 %").arg(100 * s.wer, 5, 'f', 1)),
                seconds / audio);
    std::fflush(stdout);
}

void writeWav(const QString &path, const std::vector<float> &samples)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return;
    QByteArray data;
    data.reserve(qsizetype(samples.size() * 2));
    for (float s : samples) {
        const qint16 v = qint16(std::clamp(s, -1.0f, 1.0f) * 32767);
        data.append(char(v & 0xff)).append(char((v >> 8) & 0xff));
    }
    auto u32 = [](quint32 v) { return QByteArray(reinterpret_cast<const char *>(&v), 4); };
    auto u16 = [](quint16 v) { return QByteArray(reinterpret_cast<const char *>(&v), 2); };
    f.write("RIFF" + u32(36 + quint32(data.size())) + "WAVEfmt " + u32(16) + u16(1) + u16(1) + u32(16000) +
            u32(32000) + u16(2) + u16(16) + "data" + u32(quint32(data.size())));
    f.write(data);
}

// whisper-cli with our decoding, one word a segment so that its word starts can be read.
void whisperCli(const SpeechScore::Recording &r, const QString &wav, const QString &model, const QString &vad,
                const QString &prefix, const char *name)
{
    QStringList args{"-m", model, "-f", wav, "-l", "en", "-t", QString::number(WhisperEngine::threadCount()),
                     "-bs", "1", "-bo", "5", "-mc", "0", "-et", "2.4", "-lpt", "-1.0", "-sns", "-np", "-ml", "1",
                     "-sow", "-oj", "-of", prefix};
    if (!vad.isEmpty())
        args << "--vad" << "-vm" << vad;
    QElapsedTimer clock;
    clock.start();
    QProcess p;
    p.start(QStringLiteral("whisper-cli"), args);
    p.waitForFinished(-1);
    const double seconds = clock.nsecsElapsed() / 1e9;
    QFile json(prefix + QStringLiteral(".json"));
    if (!json.open(QIODevice::ReadOnly)) {
        std::printf("  whisper-cli failed: %s\n", p.readAllStandardError().right(300).constData());
        return;
    }
    QList<double> starts;
    QStringList texts;
    for (const QJsonValue &v : QJsonDocument::fromJson(json.readAll()).object().value("transcription").toArray()) {
        const QString text = v["text"].toString();
        if (text.trimmed().isEmpty())
            continue;
        starts << v["offsets"]["from"].toDouble() / 1000.0;
        texts << text;
    }
    print("whisper-cli", name, SpeechScore::score(r, starts, texts.join(QString())), seconds,
          double(r.samples.size()) / 16000.0);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 4) {
        std::fprintf(stderr, "usage: bench-recognition MODEL VAD_MODEL CONVERSATION_FOLDER [THREE_VOICES_FOLDER] "
                             "[SET-UP...]\n");
        return 2;
    }
    const QString model = QString::fromLocal8Bit(argv[1]);
    const QString vad = QString::fromLocal8Bit(argv[2]);
    const QDir conversation(QString::fromLocal8Bit(argv[3]));
    // The three voices' folder, as tests/speakers/make-three-voices writes it, where given.
    const bool three = argc > 4 && QFileInfo(QString::fromLocal8Bit(argv[4])).isDir();
    const QDir threeVoices(three ? QString::fromLocal8Bit(argv[4]) : QString());
    QStringList only;
    for (int i = three ? 5 : 4; i < argc; ++i)
        only << QString::fromLocal8Bit(argv[i]);

    // The engine finds the voice-activity model in the data folder.
    QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    QDir().mkpath(QFileInfo(VadModel::path()).absolutePath());
    QFile::copy(vad, VadModel::path());

    QList<SpeechScore::Recording> recordings{
        SpeechScore::joinedLibriVox(),
        SpeechScore::fromRttm(QStringLiteral("pyannote sample (telephone, two speakers)"),
                              conversation.filePath("sample.wav"), conversation.filePath("sample.rttm")),
    };
    if (three)
        recordings << SpeechScore::fromRttm(QStringLiteral("three real voices taking turns"),
                                            threeVoices.filePath("three.wav"), threeVoices.filePath("three.rttm"));
    const QList<Candidate> candidates{
        {"greedy", {false, 1, 0.6f, false}},
        {"VAD", {true, 1, 0.6f, false}},
        {"beam 5", {false, 5, 0.6f, false}},
        {"DTW", {false, 1, 0.6f, true}},
        {"no-speech 0.3", {false, 1, 0.3f, false}},
        {"VAD + beam 5", {true, 5, 0.6f, false}},
    };
    WhisperEngine::LoadedModel loaded(model);
    std::unique_ptr<WhisperEngine::LoadedModel> aligned;
    for (const SpeechScore::Recording &r : recordings) {
        const double audio = double(r.samples.size()) / 16000.0;
        std::printf("%s: %.1f s, %lld onsets\n", qPrintable(r.name), audio, qlonglong(r.onsets.size()));
        std::fflush(stdout);
        for (const Candidate &c : candidates) {
            if (!only.isEmpty() && !only.contains(QString::fromLatin1(c.name)))
                continue;
            if (c.setup.dtw && !aligned)
                aligned = std::make_unique<WhisperEngine::LoadedModel>(model, kBaseHeads);
            QElapsedTimer clock;
            clock.start();
            const TranscriptionResult result = WhisperEngine::transcribe(
                r.samples, c.setup.dtw ? *aligned : loaded, QStringLiteral("en"), {}, {}, WhisperEngine::kPieceSeconds,
                c.setup);
            print("sagwerk", c.name, SpeechScore::score(r, result), clock.nsecsElapsed() / 1e9, audio);
            if (qEnvironmentVariableIsSet("SAGWERK_BENCH_SHOW"))
                std::printf("    %s\n", qPrintable(result.fullText));
        }
        const QString wav = data.filePath(QStringLiteral("recording.wav"));
        writeWav(wav, r.samples);
        if (only.isEmpty() || only.contains(QStringLiteral("greedy")))
            whisperCli(r, wav, model, {}, data.filePath(QStringLiteral("cli-greedy")), "greedy");
        if (only.isEmpty() || only.contains(QStringLiteral("VAD")))
            whisperCli(r, wav, model, vad, data.filePath(QStringLiteral("cli-vad")), "VAD");
    }
    return 0;
}
