#include "storage/BundleStore.h"

#include "core/FileNames.h"
#include "core/Text.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QSysInfo>
#include <QDir>
#include <QDirIterator>
#include <QtConcurrent/QtConcurrentMap>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>

#include <signal.h>
#include <unistd.h>

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
    if (count <= 0)
        return QString();
    const QList<qsizetype> ends = Text::characterEnds(text);
    return ends.size() < count ? text : text.left(ends.at(count - 1));
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

// Temporaries carry the writer's process id, so that those of a writer that died (a
// crash, a kill, a power cut) can be told from those still being written, by another
// Sagwerk process too.
const QString documentTemporaryPrefix = QStringLiteral(".sagwerk.json-");
const QString bundleTemporaryPrefix = QStringLiteral(".neu-");
const QString temporarySuffix = QStringLiteral(".tmp");

QString temporaryName(const QString &prefix)
{
    return prefix + QString::number(QCoreApplication::applicationPid()) + u'-'
           + QUuid::createUuid().toString(QUuid::Id128) + temporarySuffix;
}

// Whether a temporary's writer is gone.
bool stale(const QString &name, const QString &prefix)
{
    if (!name.startsWith(prefix) || !name.endsWith(temporarySuffix))
        return false;
    bool ok = false;
    const qint64 pid = QStringView(name).mid(prefix.size()).split(u'-').front().toLongLong(&ok);
    return ok && pid > 0 && pid <= std::numeric_limits<pid_t>::max() && ::kill(pid_t(pid), 0) != 0 && errno == ESRCH;
}

// Writes a temporary file that replaces the document only when complete and on disk, so
// a failure or a crash leaves the old document or the new one. Gives the failure's text.
std::optional<QString> write(const QString &bundle, const BundleData &data)
{
    const std::optional<QByteArray> bytes = data.encode();
    if (!bytes)
        return QStringLiteral("invalid value");
    const QString temporary = bundle + u'/' + temporaryName(documentTemporaryPrefix);
    QFile file(temporary);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return file.errorString();
    const bool written = file.write(*bytes) == bytes->size() && file.flush() && ::fsync(file.handle()) == 0;
    const QString error = file.errorString();
    file.close();
    if (!written || file.error() != QFile::NoError) {
        QFile::remove(temporary);
        return error.isEmpty() ? file.errorString() : error;
    }
    if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(documentPath(bundle)).constData()) != 0) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        QFile::remove(temporary);
        return reason;
    }
    return std::nullopt;
}

// Removes the document temporaries of dead writers in `bundle`.
void removeStaleTemporaries(const QString &bundle)
{
    const QStringList names = QDir(bundle).entryList({documentTemporaryPrefix + u'*'}, QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        if (stale(name, documentTemporaryPrefix))
            QFile::remove(bundle + u'/' + name);
    }
}

// "-host-pid": the host's first label, cut short and made safe for a folder name.
QString writerPart()
{
    QString host = QSysInfo::machineHostName().section(u'.', 0, 0).left(12);
    for (QChar &c : host) {
        if (!c.isLetterOrNumber() && c != u'-')
            c = u'-';
    }
    if (host.isEmpty())
        host = QStringLiteral("host");
    return u'-' + host + u'-' + QString::number(QCoreApplication::applicationPid());
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
        // A bundle being made is no bundle yet; one whose maker died is rubble.
        if (child.fileName().startsWith(bundleTemporaryPrefix)) {
            if (stale(child.fileName(), bundleTemporaryPrefix) && !child.isSymLink())
                QDir(child.filePath()).removeRecursively();
            continue;
        }
        // A link is no directory of its own.
        if (!child.isSymLink() && child.isDir())
            folders << child.filePath();
    }
    // Decoding the documents is nearly all the work, and each stands alone: every core
    // takes a share.
    const QList<std::optional<BundleData>> documents
        = QtConcurrent::blockingMapped(folders, [summaries](const QString &folder) {
              removeStaleTemporaries(folder);
              return read(folder, summaries);
          });
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
                    const TranscriptionResult &result, const std::optional<SourceContent> &content)
{
    // The bundle is made in a hidden folder and then moved to its name, so that the list
    // never shows it half made and a crash leaves only rubble that the next listing
    // removes.
    const QString rootPath = root();
    const QString making = rootPath + u'/' + temporaryName(bundleTemporaryPrefix);
    if (!QDir().mkpath(making))
        throw BundleError::folderNotCreated(rootPath + u'/' + folderName(displayName, createdAt));
    QString extension = FileNames::pathExtension(audioSource);
    if (extension.isEmpty())
        extension = QStringLiteral("m4a");
    const QString audioFileName = QStringLiteral("audio.") + extension;
    QFile::copy(audioSource, making + u'/' + audioFileName);
    BundleData data;
    data.displayName = displayName;
    data.createdAt = createdAt;
    data.language = result.language;
    data.processingSeconds = result.processingSeconds;
    data.audioFileName = audioFileName;
    data.fullText = result.fullText;
    data.sourceContent = content;
    if (!result.model.isEmpty())
        data.model = result.model;
    for (const TranscriptSegment &s : result.segments) {
        QList<StoredWord> words;
        for (const TranscriptWord &w : s.words)
            words.append(StoredWord{w.text, w.startMs, w.endMs});
        data.segments.append(StoredSegment{s.startMs, s.endMs, s.text, words});
    }

    if (const std::optional<QString> error = write(making, data)) {
        // The folder keeps its audio copy under its name, with no document: the list does
        // not show it, and the recording is not lost with the transcript.
        const QString folder = uniqueDir(rootPath + u'/' + folderName(displayName, createdAt));
        if (!QDir().rename(making, folder))
            QDir(making).removeRecursively();
        throw BundleError::documentNotWritten(documentPath(folder), *error);
    }
    // Renaming refuses a name that is taken. Another writer may have taken it since
    // uniqueDir looked, or a shared folder's cache may show it free while it is not; then
    // the name gains this writer's own part, which no other writer chooses.
    QString base = rootPath + u'/' + folderName(displayName, createdAt);
    for (int attempt = 0;; ++attempt) {
        const QString folder = uniqueDir(base);
        if (QDir().rename(making, folder))
            return LoadedBundle{folder, folder, data};
        if (attempt == 0)
            base += writerPart();
        if (attempt == 10) {
            QDir(making).removeRecursively();
            throw BundleError::folderNotCreated(folder);
        }
    }
}

std::optional<SourceContent> sourceContent(const QString &path, const std::function<bool()> &cancelled)
{
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray buffer(1 << 20, Qt::Uninitialized);
    qint64 size = 0;
    for (;;) {
        if (cancelled && cancelled())
            return std::nullopt;
        const qint64 n = file.read(buffer.data(), buffer.size());
        if (n < 0)
            return std::nullopt;
        if (n == 0)
            break;
        hash.addData(QByteArrayView(buffer.constData(), n));
        size += n;
    }
    return SourceContent{size, QString::fromLatin1(hash.result().toHex())};
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

void saveSpeakerNames(const QString &bundle, const QMap<QString, QString> &names)
{
    patch(bundle, [&](BundleData &d) { d.speakerNames = names.isEmpty() ? std::nullopt : std::optional(names); });
}

void saveDisplayName(const QString &bundle, const QString &name)
{
    patch(bundle, [&](BundleData &d) { d.displayName = name; });
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
