#pragma once

#include <QObject>
#include <QStringList>

class QCommandLineParser;

#include <memory>

// Every command runs on the application's one event loop and ends it with its exit
// status. The quick ones return their status; those that wait for work (a download, a
// transcription) start it, return the object that runs it, and end the loop through
// Cli::finish when it is over, or return nothing when they ended at once. args[0] is the
// command's name.
namespace Cli {

QString usage();

// Ends the application's event loop with `status`.
void finish(int status);

// Says what was wrong with the arguments, if the parser knows, and how to call the
// program, on standard error; returns the status for that.
int usageError(const QCommandLineParser &parser);

// `transcribe FILE|LINK --model ID|PATH [--language CODE]`, or with `--save` into the
// history, with the settings' model and language unless given.
std::unique_ptr<QObject> transcribe(const QStringList &args);

// `batch SOURCE... --save [--jobs N] [--model ID|PATH] [--language CODE] [--shard K/N|auto]
// [--report FILE]`: every source into the history once, resumably, a share of them with
// --shard.
std::unique_ptr<QObject> batch(const QStringList &args);

// `list [--json]`: the stored transcriptions, newest first, as the application loads them.
int list(const QStringList &args);

// `models`: the catalogue with what lies in the models folder.
int models(const QStringList &args);

// `download ID [--from URL]`: one model into the models folder; prints its path.
std::unique_ptr<QObject> download(const QStringList &args);

// `export BUNDLE --format txt|srt [--view N|speakers] [--no-timestamps] [--output FILE]`.
int exportBundle(const QStringList &args);

// `smooth BUNDLE --level N [--model ID]`: an AI refinement level into the bundle; prints it.
std::unique_ptr<QObject> smooth(const QStringList &args);

// `speakers BUNDLE [--speakers N] [--json]`: the speaker text into the bundle; prints it.
std::unique_ptr<QObject> speakers(const QStringList &args);

// `interview --duration SECONDS [--live-speakers] [--language CODE]`: records from the
// default input, prints each segment as it arrives, stores the interview in the history.
std::unique_ptr<QObject> interview(const QStringList &args);

// `import-model SOURCE`: a Whisper model on disk becomes a model of the catalogue.
int importModel(const QStringList &args);

// Exit statuses shared by all commands.
enum Exit { Ok = 0, Failed = 1, Usage = 2, Cancelled = 130 };

} // namespace Cli
