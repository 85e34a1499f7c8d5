#pragma once

#include "storage/BundleData.h"
#include "storage/BundleError.h"

#include "core/HistoryItem.h"
#include "core/TranscriptionResult.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>

// One folder per transcription under the root: the document `sagwerk.json` and a copy of
// the audio. Folders are passed and returned as absolute paths.
//
// Reading tolerates everything and skips what it cannot use; the patches drop their
// failures; only `create` throws. Patches must run one after the other (on the main
// thread), since each re-reads, changes one field and writes the whole document.
namespace BundleStore {

// The folder of all bundles, created on demand; its path even when that fails.
QString root();

// Every bundle with a readable document, newest first; equal dates keep listing order.
QList<LoadedBundle> list();
// The same without the segments, which are most of a document: what a list of many
// bundles needs, at a fraction of the cost. `load` reads one of them whole.
QList<LoadedBundle> listSummaries();
// The bundle in `bundle`'s folder, read whole; none when its document is unreadable.
std::optional<LoadedBundle> load(const QString &bundle);

// Makes the folder, copies `audioSource` into it (a failed copy is dropped) and writes the
// document, all under a hidden name that becomes the folder's when the document is
// written. Throws `BundleError` when the folder or the document cannot be made; where the
// document failed, the folder keeps its audio copy under its name, without a document,
// so no list shows it. `content` is stored as the document's `sourceContent`.
//
// Many writers may share the root, on other machines too: when the free name that was
// chosen is taken by the time the folder is moved there, the name gains a part made of the
// host and the process, which no other writer uses, and the move is tried again.
LoadedBundle create(const QString &displayName, const QDateTime &createdAt, const QString &audioSource,
                    const TranscriptionResult &result, const std::optional<SourceContent> &content = std::nullopt);

// The size and the SHA-256 of the bytes of `path`, read in pieces; none when it cannot be
// read whole or `cancelled` says stop.
std::optional<SourceContent> sourceContent(const QString &path, const std::function<bool()> &cancelled = {});

// Reads the document of `bundle`, applies `change` and writes it back. Nothing happens
// when the document cannot be read or decoded; a failed write is dropped and leaves the
// old document in place.
void patch(const QString &bundle, const std::function<void(BundleData &)> &change);

void saveRefined(const QString &bundle, qint64 level, const QString &text);
// An empty list removes the key.
void saveCorrections(const QString &bundle, const QList<Correction> &corrections);
void saveSpeakerText(const QString &bundle, const QString &text);
// An empty map removes the key.
void saveSpeakerNames(const QString &bundle, const QMap<QString, QString> &names);
// The name the history shows; the folder keeps its name.
void saveDisplayName(const QString &bundle, const QString &name);

// The only way from disk to memory. Segments get fresh ids; the audio path is not
// checked; `refined` keeps only the keys that are decimal integers (no blank, no line
// break around the digits).
HistoryItem historyItem(const LoadedBundle &bundle);

// Removes the folder with all it holds; failures are dropped.
void remove(const QString &bundle);

// "yyyy-MM-dd_HH-mm-ss" in local time, "_", and the name without its extension, made safe
// for a folder and cut to 60 characters; "Sagwerk" when nothing is left of the name.
QString folderName(const QString &displayName, const QDateTime &date);

// `candidate` if nothing is there, else the first free of candidate-2, candidate-3, ...
QString uniqueDir(const QString &candidate);

} // namespace BundleStore
