#include "speakers/Diarizer.h"

#include "core/Text.h"
#include "speakers/DiarizerError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QThread>

#include <algorithm>
#include <limits>

namespace Diarizer {

namespace {

// The span that holds `t` deepest (farthest from both its ends), else the nearest by edge
// distance; ties go to the span earlier in the list. Where two spans overlap at a change
// of speaker, the first half of the overlap so stays with the voice that was speaking and
// the second goes to the one that takes over, rather than all of it to the former.
std::optional<int> speakerAt(double t, const QList<SpeakerSpan> &spans)
{
    if (spans.isEmpty())
        return std::nullopt;
    double deepest = -1;
    std::optional<int> holder;
    for (const SpeakerSpan &s : spans) {
        if (s.start <= t && t <= s.end && std::min(t - s.start, s.end - t) > deepest) {
            deepest = std::min(t - s.start, s.end - t);
            holder = s.speaker;
        }
    }
    if (holder)
        return holder;
    double best = std::numeric_limits<double>::max();
    std::optional<int> speaker;
    for (const SpeakerSpan &s : spans) {
        const double distance = t < s.start ? s.start - t : t - s.end;
        if (distance < best) {
            best = distance;
            speaker = s.speaker;
        }
    }
    return speaker;
}

// One vote per word at its midpoint, whatever its length; ties go to the lowest number.
std::optional<int> speakerFor(const TranscriptSegment &segment, const QList<SpeakerSpan> &spans)
{
    if (segment.words.isEmpty())
        return speakerAt(double(segment.startMs + segment.endMs) / 2000.0, spans);
    QMap<int, int> votes;
    for (const TranscriptWord &w : segment.words) {
        if (const std::optional<int> s = speakerAt(double(w.startMs + w.endMs) / 2000.0, spans))
            ++votes[*s];
    }
    std::optional<int> winner;
    int most = 0;
    for (auto it = votes.cbegin(); it != votes.cend(); ++it) { // ascending numbers
        if (it.value() > most) {
            most = it.value();
            winner = it.key();
        }
    }
    return winner;
}

QString decodeUtf8(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8.decode(bytes);
    return utf8.hasError() ? QString() : text;
}

QStringList nonEmptyLines(const QString &text)
{
    static const QRegularExpression breaks(QStringLiteral("[\\n\\r]"));
    return text.split(breaks, Qt::SkipEmptyParts);
}

// The number of CPUs in a kernel list such as "0-7,16"; 0 when it names none.
int cpuListCount(const QString &list)
{
    int count = 0;
    for (const QString &part : list.trimmed().split(u',', Qt::SkipEmptyParts)) {
        const QStringList ends = part.split(u'-');
        bool okA = false, okB = true;
        const int a = ends.value(0).toInt(&okA);
        const int b = ends.size() > 1 ? ends.value(1).toInt(&okB) : a;
        if (okA && okB && b >= a)
            count += b - a + 1;
    }
    return count;
}

bool isExecutableFile(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isExecutable();
}

} // namespace

QList<TranscriptSegment> splitAtSpeakerChanges(const QList<TranscriptSegment> &segments,
                                               const QList<SpeakerSpan> &spans)
{
    if (spans.isEmpty())
        return segments;
    QList<TranscriptSegment> out;
    out.reserve(segments.size());
    for (const TranscriptSegment &segment : segments) {
        const QList<TranscriptWord> &words = segment.words;
        QList<std::optional<int>> speakers;
        speakers.reserve(words.size());
        for (const TranscriptWord &w : words)
            speakers << speakerAt(double(w.startMs + w.endMs) / 2000.0, spans);
        if (words.isEmpty() || std::ranges::all_of(speakers, [&](auto s) { return s == speakers.first(); })) {
            out << segment;
            continue;
        }
        // One piece per run of words with one speaker; the outer pieces keep the
        // segment's own edges.
        for (qsizetype from = 0; from < words.size();) {
            qsizetype to = from + 1;
            while (to < words.size() && speakers[to] == speakers[from])
                ++to;
            TranscriptSegment piece;
            piece.startMs = from == 0 ? segment.startMs : words[from].startMs;
            piece.endMs = to == words.size() ? segment.endMs : words[to - 1].endMs;
            piece.words = words.mid(from, to - from);
            QStringList texts;
            for (const TranscriptWord &w : std::as_const(piece.words))
                texts << w.text;
            piece.text = texts.join(u' ');
            out << piece;
            from = to;
        }
    }
    return out;
}

QString speakerLabeledText(const QList<TranscriptSegment> &whole, const QList<SpeakerSpan> &spans)
{
    QStringList texts;
    texts.reserve(whole.size());
    for (const TranscriptSegment &s : whole)
        texts << s.text;
    const QString plain = texts.join(u' ');
    if (whole.isEmpty() || spans.isEmpty())
        return plain;

    struct Group {
        std::optional<int> speaker;
        QString text;
    };
    QList<Group> groups;
    // Each word goes to its own speaker: a segment that holds a change is cut there.
    for (const TranscriptSegment &s : splitAtSpeakerChanges(whole, spans)) {
        const std::optional<int> speaker = speakerFor(s, spans);
        if (!groups.isEmpty() && groups.last().speaker == speaker)
            groups.last().text += u' ' + s.text;
        else
            groups.append({speaker, s.text});
    }

    // Displayed numbers by first appearance; the raw number shows only through that order.
    QList<std::optional<int>> order;
    for (const Group &g : groups) {
        if (!order.contains(g.speaker))
            order.append(g.speaker);
    }
    if (order.size() < 2)
        return plain;

    QStringList lines;
    lines.reserve(groups.size());
    for (const Group &g : groups) {
        // The label stays German in every interface language; readers of the text rely on it.
        lines << QStringLiteral("Sprecher ") + QString::number(order.indexOf(g.speaker) + 1) + QStringLiteral(": ")
                     + Text::trimBlanks(g.text);
    }
    return lines.join(u'\n');
}

std::optional<QString> cliURL()
{
    // A program named from outside wins, and only it: tests point at their stand-ins so.
    const QString named = qEnvironmentVariable("SAGWERK_DIARIZE_PROGRAM");
    if (!named.isEmpty())
        return isExecutableFile(named) ? std::optional(named) : std::nullopt;
    if (QCoreApplication::instance()) {
        // Beside the binary, then in the private folder that the installed layout and the
        // build tree share.
        const QString bin = QCoreApplication::applicationDirPath();
        for (const QString &candidate :
             {bin + QStringLiteral("/sherpa-diarize"), bin + QStringLiteral("/../lib/sagwerk/sherpa-diarize")}) {
            if (isExecutableFile(candidate))
                return QDir::cleanPath(candidate);
        }
    }
    const QString vendored = QDir::homePath() + QStringLiteral("/Developer/SagwerkMac/vendor/sherpa-diarize");
    if (isExecutableFile(vendored))
        return vendored;
    return std::nullopt;
}

int performanceCoreCount(std::optional<int> performanceCores, int activeProcessors)
{
    const int n = performanceCores && *performanceCores >= 1 ? *performanceCores : activeProcessors;
    return std::clamp(n, 2, 8);
}

int performanceCoreCount()
{
    // Only hybrid CPUs have the performance-core list.
    QFile list(QStringLiteral("/sys/devices/cpu_core/cpus"));
    std::optional<int> performance;
    if (list.open(QIODevice::ReadOnly))
        performance = cpuListCount(QString::fromLatin1(list.readAll()));
    return performanceCoreCount(performance, QThread::idealThreadCount());
}

QStringList arguments(const QString &wav, const QString &segModel, const QString &embModel, double threshold,
                      int numClusters, int threads)
{
    QStringList args;
    if (numClusters >= 1)
        args << QStringLiteral("--clustering.num-clusters=") + QString::number(numClusters);
    else
        args << QStringLiteral("--clustering.cluster-threshold=")
                    + QString::number(threshold, 'g', QLocale::FloatingPointShortest);
    args << QStringLiteral("--segmentation.pyannote-model=") + segModel
         << QStringLiteral("--embedding.model=") + embModel << QStringLiteral("--embedding.provider=cpu")
         << QStringLiteral("--segmentation.provider=cpu")
         << QStringLiteral("--embedding.num-threads=") + QString::number(threads)
         << QStringLiteral("--segmentation.num-threads=") + QString::number(threads)
         << QStringLiteral("--min-duration-on=0.3") << QStringLiteral("--min-duration-off=0.5") << wav;
    return args;
}

QList<SpeakerSpan> parseResult(const QByteArray &output)
{
    static const QRegularExpression blanks(QStringLiteral("[ \\t]"));
    QList<SpeakerSpan> spans;
    for (const QString &line : nonEmptyLines(decodeUtf8(output))) {
        const QStringList pieces = line.split(blanks, Qt::SkipEmptyParts);
        if (pieces.size() < 4 || pieces[1] != QStringLiteral("--"))
            continue;
        bool okStart = false, okEnd = false, okSpeaker = false;
        const double start = pieces[0].toDouble(&okStart);
        const double end = pieces[2].toDouble(&okEnd);
        if (!okStart || !okEnd || !pieces[3].startsWith(QStringLiteral("speaker_")))
            continue;
        const QString number = pieces[3].mid(8);
        const int speaker = number.toInt(&okSpeaker);
        if (number.isEmpty() || !okSpeaker)
            continue;
        spans.append({start, end, speaker});
    }
    std::stable_sort(spans.begin(), spans.end(),
                     [](const SpeakerSpan &a, const SpeakerSpan &b) { return a.start < b.start; });
    return spans;
}

QList<double> parseProgress(const QByteArray &chunk)
{
    // A chunk stands by itself: a line cut by a chunk boundary reads as two lines, which
    // at worst shows a shorter number for a moment.
    QList<double> fractions;
    for (const QString &line : nonEmptyLines(decodeUtf8(chunk))) {
        const qsizetype at = line.indexOf(QStringLiteral("progress "));
        if (at < 0)
            continue;
        const QStringList pieces = line.mid(at + 9).split(u'%', Qt::SkipEmptyParts);
        if (pieces.isEmpty())
            continue;
        bool ok = false;
        const double percent = Text::trimBlanks(pieces.first()).toDouble(&ok);
        if (!ok)
            continue;
        fractions << std::clamp(percent / 100.0, 0.0, 1.0);
    }
    return fractions;
}

QList<SpeakerSpan> diarize(const QString &wav, const QString &segModel, const QString &embModel, double threshold,
                           int numClusters, const TranscribeControlPtr &control,
                           const std::function<void(double)> &progress)
{
    const std::optional<QString> cli = cliURL();
    if (!cli)
        throw DiarizerError::cliNotFound();

    QProcess child;
    child.setProgram(*cli);
    child.setArguments(arguments(wav, segModel, embModel, threshold, numClusters, performanceCoreCount()));
    child.setProcessChannelMode(QProcess::SeparateChannels);
    child.start();
    if (!child.waitForStarted(30'000)) {
        const QString error = child.errorString();
        child.kill();
        throw DiarizerError::failed(error);
    }
    if (control)
        control->setProcess(child.processId());

    // Both streams are drained as they come, so that neither pipe fills and stalls the
    // child; waits are bounded so that a child that closes its streams early still ends.
    QByteArray output;
    auto drain = [&] {
        output += child.readAllStandardOutput();
        const QByteArray errors = child.readAllStandardError();
        if (!errors.isEmpty() && progress) {
            for (double fraction : parseProgress(errors))
                progress(fraction);
        }
    };
    while (child.state() != QProcess::NotRunning) {
        child.waitForReadyRead(100);
        drain();
    }
    drain();
    if (control)
        control->setProcess(std::nullopt);

    // A child killed by a signal has no exit code; the signal's number stands for it.
    int status = child.exitCode();
    if (child.exitStatus() != QProcess::NormalExit && status == 0)
        status = 1;
    if (status != 0) {
        if (control && control->isCancelled())
            throw DiarizerError::cancelled();
        throw DiarizerError::failed(QStringLiteral("Exit ") + QString::number(status));
    }
    return parseResult(output);
}

} // namespace Diarizer
