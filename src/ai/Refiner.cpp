// The refinement flows over the prompts, the chunker and the two clients.
#include "ai/Refiner.h"

#include "ai/Prompts.h"
#include "ai/ProviderClients.h"
#include "ai/AIError.h"
#include "core/Text.h"

#include <QPromise>

#include <functional>
#include <memory>

namespace Refiner {

namespace {

constexpr int maxChars = 9000;
constexpr int chunkTokens = 8192;
constexpr int wholeTextTokens = 16384;

template <typename T>
QFuture<T> failed(const AIError &error)
{
    QPromise<T> promise;
    promise.start();
    promise.setException(std::make_exception_ptr(error));
    promise.finish();
    return promise.future();
}

// One request by the model's provider; an empty key sends nothing.
QFuture<QString> call(const AIModel &model, const QString &apiKey, const QString &system, const QString &user,
                      int maxTokens, const CancelTokenPtr &control = {})
{
    if (apiKey.isEmpty())
        return failed<QString>(AIError::noKey());
    return model.provider == AIProvider::openai ? ProviderClients::callOpenAI(system, user, apiKey, model.id, maxTokens, control)
                                                : ProviderClients::callAnthropic(system, user, apiKey, model.id, maxTokens, control);
}

// The chunks one after the other, each message made from the answers so far; the answers
// in order, or the first failure.
using MessageFor = std::function<QString(const QStringList &answers, const QString &chunk)>;

QFuture<QStringList> callEach(const AIModel &model, const QString &apiKey, const QString &system,
                              const QStringList &chunks, MessageFor messageFor,
                              const CancelTokenPtr &control = {})
{
    struct Run {
        QPromise<QStringList> promise;
        QStringList answers;
        std::function<void()> next;
    };
    auto run = std::make_shared<Run>();
    run->promise.start();
    // The step holds the run only weakly: the pending request's continuation keeps it alive.
    run->next = [weak = std::weak_ptr<Run>(run), model, apiKey, system, chunks, messageFor, control] {
        const std::shared_ptr<Run> self = weak.lock();
        const qsizetype index = self->answers.size();
        if (index == chunks.size()) {
            self->promise.addResult(self->answers);
            self->promise.finish();
            return;
        }
        call(model, apiKey, system, messageFor(self->answers, chunks[index]), chunkTokens, control)
            .then([self](const QString &answer) {
                self->answers.append(answer);
                self->next();
            })
            .onFailed([self] { // an AIError, or Cancelled
                self->promise.setException(std::current_exception());
                self->promise.finish();
            });
    };
    QFuture<QStringList> future = run->promise.future();
    run->next();
    return future;
}

// The labels of all answers so far, each once, in order of first appearance.
QStringList labelsOf(const QStringList &answers)
{
    QStringList labels;
    for (const QString &answer : answers) {
        for (const QString &label : speakerLabels(answer)) {
            if (!labels.contains(label))
                labels.append(label);
        }
    }
    return labels;
}

// A speaker flow: one request with the text as given, or the chunks with the labels
// found so far carried ahead of each; the answers joined by a line feed.
QFuture<QString> speakerFlow(const QString &text, const QString &apiKey, const AIModel &model, const QString &system,
                             QString (*message)(const QStringList &, const QString &),
                             const CancelTokenPtr &control)
{
    const QStringList chunks = chunk(text, maxChars);
    if (chunks.size() <= 1)
        return call(model, apiKey, system, text, chunkTokens, control);
    return callEach(
               model, apiKey, system, chunks,
               [message](const QStringList &answers, const QString &piece) { return message(labelsOf(answers), piece); },
               control)
        .then([](const QStringList &answers) { return answers.join(u'\n'); });
}

bool isWordSeparator(char32_t c)
{
    if ((c >= 0x09 && c <= 0x0D) || c == 0x85)
        return true;
    const QChar::Category category = QChar::category(c);
    return category == QChar::Separator_Space || category == QChar::Separator_Line
        || category == QChar::Separator_Paragraph;
}

qsizetype wordCount(const QString &text)
{
    qsizetype words = 0;
    bool inWord = false;
    for (const char32_t c : text.toUcs4()) {
        const bool separator = isWordSeparator(c);
        if (!separator && !inWord)
            ++words;
        inWord = !separator;
    }
    return words;
}

} // namespace

QFuture<QString> refine(const QString &text, const QString &apiKey, const AIModel &model, qint64 level,
                        bool speakerAware)
{
    const QString system = Prompts::systemPrompt(level, speakerAware);
    if (level >= 3)
        return call(model, apiKey, system, text, wholeTextTokens);
    const QStringList chunks = chunk(text, maxChars);
    if (chunks.size() <= 1)
        return call(model, apiKey, system, text, chunkTokens);
    return callEach(model, apiKey, system, chunks, [](const QStringList &, const QString &piece) { return piece; })
        .then([](const QStringList &answers) { return answers.join(QStringLiteral("\n\n")); });
}

QFuture<QString> nameSpeakers(const QString &text, const QString &apiKey, const AIModel &model,
                                const CancelTokenPtr &control)
{
    return speakerFlow(text, apiKey, model, Prompts::naming(), Prompts::namingMessage, control)
        .then([text](const QString &answer) { return plausibleRefinement(text, answer) ? answer : text; });
}

QFuture<QString> detectSpeakers(const QString &text, const QString &apiKey, const AIModel &model,
                                const CancelTokenPtr &control)
{
    return speakerFlow(text, apiKey, model, Prompts::detection(), Prompts::detectionMessage, control);
}

QStringList speakerLabels(const QString &text)
{
    QStringList labels;
    for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts)) {
        const QString trimmed = Text::trimBlanks(line);
        const qsizetype colon = trimmed.indexOf(u':');
        if (colon < 0)
            continue;
        const QString candidate = Text::trimBlanks(trimmed.first(colon));
        if (candidate.isEmpty() || Text::characterCount(candidate) > 40)
            continue;
        if (candidate.split(u' ', Qt::SkipEmptyParts).size() >= 6)
            continue;
        if (!labels.contains(candidate))
            labels.append(candidate);
    }
    return labels;
}

bool plausibleRefinement(const QString &original, const QString &refined)
{
    const qsizetype originalWords = wordCount(original);
    if (originalWords == 0)
        return false;
    const double ratio = double(wordCount(refined)) / double(originalWords);
    return ratio >= 0.6 && ratio <= 1.4;
}

} // namespace Refiner
