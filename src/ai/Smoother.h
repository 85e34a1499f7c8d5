#pragma once

#include "core/AIModel.h"
#include "core/TranscribeControl.h"

#include <QByteArray>
#include <QFuture>
#include <QString>
#include <QStringList>

#include <optional>

// The AI refinement: a transcript rewritten at one of three levels, names and roles put
// on voice-separated speakers, and speakers found from the content alone. Stateless; a
// flow's requests go out one after the other, each after the answer before it, and the
// first failure ends the flow with a SmoothingError. Call on the main thread: the
// requests run on its event loop and never block it.
namespace Smoother {

// Levels 1 and 2 go out in chunks of 9000 characters, answers joined by an empty line;
// level 3 and above as one request, however long.
QFuture<QString> smooth(const QString &text, const QString &apiKey, const AIModel &model, qint64 level,
                        bool speakerAware);
// Replaces "Sprecher N" labels by names or roles the text reveals. Returns the input
// unchanged when the answer's word count strays too far from it. A cancel through
// `control` ends the request under way and fails the flow with Cancelled.
QFuture<QString> refineSpeakers(const QString &text, const QString &apiKey, const AIModel &model,
                                const TranscribeControlPtr &control = {});
// Divides an unlabelled text into speakers from its content; `control` as above.
QFuture<QString> detectSpeakers(const QString &text, const QString &apiKey, const AIModel &model,
                                const TranscribeControlPtr &control = {});

// --- Provider clients: one request each, the answer trimmed and never empty ---
QFuture<QString> callAnthropic(const QString &system, const QString &user, const QString &apiKey,
                               const QString &modelId, int maxTokens, const TranscribeControlPtr &control = {});
QFuture<QString> callOpenAI(const QString &system, const QString &user, const QString &apiKey,
                            const QString &modelId, int maxTokens, const TranscribeControlPtr &control = {});
// The answer's text, or a SmoothingError for a status outside 2xx, a refusal or an
// answer of another shape.
QString readAnthropicAnswer(int status, const QByteArray &body);
QString readOpenAIAnswer(int status, const QByteArray &body);
// The `error.message` of an error body; none for every other shape.
std::optional<QString> extractErrorMessage(const QByteArray &body);

// --- The pieces of the flows ---
// Sentences, or hard-cut pieces of over-long ones; lengths count user-perceived characters.
QStringList sentenceUnits(const QString &text, int maxChars);
// The trimmed text whole when it fits, else its units packed greedily, joined by a space.
QStringList chunk(const QString &text, int maxChars);
// The speaker labels of a text in order of first appearance.
QStringList speakerLabels(const QString &text);
// Whether a refinement kept between 60 and 140 per cent of the original's words.
bool plausibleRefinement(const QString &original, const QString &refined);

} // namespace Smoother
