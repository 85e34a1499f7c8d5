#include "storage/BundleStore.h"

#include "core/FileNames.h"
#include "core/Text.h"

#include <QDir>
#include <QDirIterator>
#include <QtConcurrent/QtConcurrentMap>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace BundleStore {

namespace {

const QString documentName = QStringLiteral("sagwerk.json");
const QString forbidden = QStringLiteral("/\\:?%*|\"<>");
constexpr int nameLength = 60;

QString documentPath(const QString &bundle)
{
    return bundle + u'/' + documentName;
}

// The first `count` user-perceived characters.
QString firstCharacters(const QString &text, int count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (int i = 0; i < count; ++i) {
        end = finder.toNextBoundary();
        if (end < 0)
            return text;
    }
    return text.left(end);
}

std::optional<BundleData> read(const QString &bundle, bool summary = false)
{
    // Only a plain file: a pipe or a device would block or never end.
    const QString path = documentPath(bundle);
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    return summary ? BundleData::decodeSummary(bytes) : BundleData::decode(bytes);
}

// Writes through a temporary file that replaces the document only when complete, so a
// failure or a crash leaves the old document or the new one. Gives the failure's text.
std::optional<QString> write(const QString &bundle, const BundleData &data)
{
    const std::optional<QByteArray> bytes = data.encode();
    if (!bytes)
        return QStringLiteral("invalid value");
    QSaveFile file(documentPath(bundle));
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    if (file.write(*bytes) != bytes->size()) {
        const QString error = file.errorString();
        file.cancelWriting();
        return error;
    }
    if (!file.commit())
        return file.errorString();
    return std::nullopt;
}

bool occupied(const QString &path)
{
    // A dangling link occupies its name too.
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace

QString root()
{
    const QString path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                         + QStringLiteral("/Sagwerk/Aufnahmen");
    QDir().mkpath(path);
    return path;
}

namespace {

QList<LoadedBundle> listing(bool summaries)
{
    QStringList folders;
    QDirIterator it(root(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        const QFileInfo child = it.nextFileInfo();
        // A link is no directory of its own.
        if (!child.isSymLink() && child.isDir())
            folders << child.filePath();
    }
    // Decoding the documents is nearly all the work, and each stands alone: every core
    // takes a share.
    const QList<std::optional<BundleData>> documents
        = QtConcurrent::blockingMapped(folders, [summaries](const QString &folder) { return read(folder, summaries); });
    QList<LoadedBundle> bundles;
    for (qsizetype i = 0; i < folders.size(); ++i)
        if (documents[i])
            bundles.append(LoadedBundle{folders[i], folders[i], std::move(*documents[i])});
    std::stable_sort(bundles.begin(), bundles.end(), [](const LoadedBundle &a, const LoadedBundle &b) {
        return a.data.createdAt > b.data.createdAt;
    });
    return bundles;
}

} // namespace

QList<LoadedBundle> list()
{
    return listing(false);
}

QList<LoadedBundle> listSummaries()
{
    return listing(true);
}

std::optional<LoadedBundle> load(const QString &bundle)
{
    if (QFileInfo(bundle).isSymLink())
        return std::nullopt;
    std::optional<BundleData> data = read(bundle);
    if (!data)
        return std::nullopt;
    return LoadedBundle{bundle, bundle, std::move(*data)};
}

LoadedBundle create(const QString &displayName, const QDateTime &createdAt, const QString &audioSource,
                    const TranscriptionResult &result)
{
    const QString folder = uniqueDir(root() + u'/' + folderName(displayName, createdAt));
    if (!QDir().mkpath(folder))
        throw BundleError::folderNotCreated(folder);

    QString extension = FileNames::pathExtension(audioSource);
    if (extension.isEmpty())
        extension = QStringLiteral("m4a");
    const QString audioFileName = QStringLiteral("audio.") + extension;
    QFile::copy(audioSource, folder + u'/' + audioFileName);

    BundleData data;
    data.displayName = displayName;
    data.createdAt = createdAt;
    data.language = result.language;
    data.processingSeconds = result.processingSeconds;
    data.audioFileName = audioFileName;
    data.fullText = result.fullText;
    for (const TranscriptSegment &s : result.segments) {
        QList<StoredWord> words;
        for (const TranscriptWord &w : s.words)
            words.append(StoredWord{w.text, w.startMs, w.endMs});
        data.segments.append(StoredSegment{s.startMs, s.endMs, s.text, words});
    }

    // The folder and its audio stay behind on failure; without a document no list shows them.
    if (const std::optional<QString> error = write(folder, data))
        throw BundleError::documentNotWritten(documentPath(folder), *error);
    return LoadedBundle{folder, folder, data};
}

void patch(const QString &bundle, const std::function<void(BundleData &)> &change)
{
    std::optional<BundleData> data = read(bundle);
    if (!data)
        return;
    change(*data);
    write(bundle, *data);
}

void saveSmoothed(const QString &bundle, qint64 level, const QString &text)
{
    patch(bundle, [&](BundleData &d) { d.smoothed.insert(QString::number(level), text); });
}

void saveCorrections(const QString &bundle, const QList<Correction> &corrections)
{
    patch(bundle, [&](BundleData &d) {
        d.corrections = corrections.isEmpty() ? std::nullopt : std::optional(corrections);
    });
}

void saveSpeakerText(const QString &bundle, const QString &text)
{
    patch(bundle, [&](BundleData &d) { d.speakerText = text; });
}

void remove(const QString &bundle)
{
    // An empty or relative path would name the working directory or a folder in it.
    if (QDir::isRelativePath(bundle))
        return;
    QDir(bundle).removeRecursively();
}

QString folderName(const QString &displayName, const QDateTime &date)
{
    QString name = FileNames::deletingPathExtension(displayName);
    for (QChar &c : name) {
        if (forbidden.contains(c))
            c = u'-';
    }
    name = Text::trimBlanks(firstCharacters(name, nameLength));
    if (name.isEmpty())
        name = QStringLiteral("Sagwerk");
    return date.toLocalTime().toString(QStringLiteral("yyyy-MM-dd_HH-mm-ss")) + u'_' + name;
}

QString uniqueDir(const QString &candidate)
{
    if (!occupied(candidate))
        return candidate;
    for (int n = 2;; ++n) {
        const QString path = candidate + u'-' + QString::number(n);
        if (!occupied(path))
            return path;
    }
}

} // namespace BundleStore
