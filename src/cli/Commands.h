#pragma once

#include <QStringList>

namespace Cli {

QString usage();

// `transcribe FILE --model PATH [--language CODE]`; args[0] is the command name.
int transcribe(const QStringList &args);

// `list [--json]`: the stored transcriptions, newest first, as the application loads them.
int list(const QStringList &args);

// `models`: the catalogue with what lies in the models folder.
int models(const QStringList &args);

// `download ID [--from URL]`: one model into the models folder; prints its path.
int download(const QStringList &args);

// `export BUNDLE --format txt|srt [--view N|speakers] [--no-timestamps] [--output FILE]`.
int exportBundle(const QStringList &args);

// `smooth BUNDLE --level N [--model ID]`: an AI refinement level into the bundle; prints it.
int smooth(const QStringList &args);

// `speakers BUNDLE [--speakers N] [--json]`: the speaker text into the bundle; prints it.
int speakers(const QStringList &args);

// `interview --duration SECONDS [--live-speakers] [--language CODE]`: records from the
// default input, prints each segment as it arrives, stores the interview in the history.
int interview(const QStringList &args);

// `import-model SOURCE`: a Whisper model on disk becomes a model of the catalogue.
int importModel(const QStringList &args);

// Exit statuses shared by all commands.
enum Exit { Ok = 0, Failed = 1, Usage = 2, Cancelled = 130 };

} // namespace Cli
