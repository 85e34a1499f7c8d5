#pragma once

#include <QString>
#include <QStringList>

// Every text that goes to an AI model as an instruction. German constants in every
// interface language: the prompts themselves tell the model to keep the transcript's
// language.
namespace Prompts {

// The system prompt of a refinement: the level's text (levels other than 1 and 2 take
// the third), the speaker sentence when the text is speaker-labelled, and the closing
// sentence.
QString systemPrompt(qint64 level, bool speakerAware);

// The system prompt that puts names and roles on voice-separated speakers.
QString naming();
// The system prompt that divides a text into speakers by its content alone.
QString detection();

// The user message of a speaker flow's chunk: the labels found so far in a note ahead of
// the chunk, or the chunk alone while there are none.
QString namingMessage(const QStringList &labels, const QString &chunk);
QString detectionMessage(const QStringList &labels, const QString &chunk);

} // namespace Prompts
