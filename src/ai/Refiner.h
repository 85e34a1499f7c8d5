#pragma once

#include "core/AIModel.h"
#include "core/CancelToken.h"

#include <QByteArray>
#include <QFuture>
#include <QString>
#include <QStringList>

#include <optional>

// The AI refinement: a transcript rewritten at one of three levels, names and roles put
// on voice-separated speakers, and speakers found from the content alone. Stateless; a
// flow's requests go out one after the other, each after the answer before it, and the
// first failure ends the flow with an AIError. Call on the main thread: the
// requests run on its event loop and never block it.
namespace Refiner {

// Levels 1 and 2 go out in chunks of 9000 characters, answers joined by an empty line;
// level 3 and above as one request, however long.
QFuture<QString> refine(const QString &text, const QString &apiKey, const AIModel &model, qint64 level,
                        bool speakerAware);
// Replaces "Sprecher N" labels by names or roles the text reveals. Returns the input
// unchanged when the answer's word count strays too far from it. A cancel through
// `control` ends the request under way and fails the flow with Cancelled.
QFuture<QString> nameSpeakers(const QString &text, const QString &apiKey, const AIModel &model,
                                const CancelTokenPtr &control = {});
// Divides an unlabelled text into speakers from its content; `control` as above.
QFuture<QString> detectSpeakers(const QString &text, const QString &apiKey, const AIModel &model,
                                const CancelTokenPtr &control = {});

// --- The pieces of the flows ---
// Sentences, or hard-cut pieces of over-long ones; lengths count user-perceived characters.
QStringList sentenceUnits(const QString &text, int maxChars);
// The trimmed text whole when it fits, else its units packed greedily, joined by a space.
QStringList chunk(const QString &text, int maxChars);
// The speaker labels of a text in order of first appearance.
QStringList speakerLabels(const QString &text);
// Whether a refinement kept between 60 and 140 per cent of the original's words.
bool plausibleRefinement(const QString &original, const QString &refined);

} // namespace Refiner
