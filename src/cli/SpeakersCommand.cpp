#include "cli/Commands.h"
#include "cli/Run.h"
#include "cli/Stored.h"

#include "core/AIModel.h"
#include "app/AppModel.h"
#include "app/SpeakerJob.h"
#include "core/UserError.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace Cli {

namespace {

QByteArray resultJson(const SpeakerJob::Result &result)
{
    QJsonArray spans;
    for (const SpeakerSpan &s : result.spans)
        spans.append(QJsonObject{{"start", s.start}, {"end", s.end}, {"speaker", s.speaker}});
    return QJsonDocument(QJsonObject{{"spans", spans}, {"speakerText", result.text}}).toJson(QJsonDocument::Indented);
}

// The speaker job on a stored transcription. The key for the AI naming step comes from
// the key store, which answers through the event loop, else from the providers' own
// variable; Ctrl-C cancels the job.
class SpeakersRun : public Run {
public:
    SpeakersRun(std::unique_ptr<AppModel> app, const HistoryItem &item, SpeakerJob::Overrides overrides, bool json)
        : m_app(std::move(app)), m_item(item), m_overrides(std::move(overrides)), m_json(json)
    {
    }

    void start()
    {
        apiKey(AIModel::by(m_app->activeModelId()).provider).then(this, [this](const QString &key) {
            m_overrides.apiKey = key;
            m_app->detectSpeakers(m_item, m_overrides)
                .then(this,
                      [this](const SpeakerJob::Result &result) {
                          const QByteArray out = m_json ? resultJson(result) : result.text.toUtf8() + '\n';
                          std::fwrite(out.constData(), 1, size_t(out.size()), stdout);
                          end(Ok);
                      })
                .onFailed(this, [this] {
                    if (m_app->errorMessage()) {
                        std::fprintf(stderr, "%s\n", qPrintable(*m_app->errorMessage()));
                        end(Failed);
                    } else if (m_interrupted) {
                        std::fprintf(stderr, "%s\n", qPrintable(cancelledText()));
                        end(Cancelled);
                    } else {
                        // Nothing to separate: an empty text without audio.
                        end(Failed);
                    }
                });
        });
    }

protected:
    void interrupted() override
    {
        m_interrupted = true;
        m_app->cancelSpeakers();
    }

private:
    const std::unique_ptr<AppModel> m_app;
    const HistoryItem m_item;
    SpeakerJob::Overrides m_overrides;
    const bool m_json;
    bool m_interrupted = false;
};

} // namespace

std::unique_ptr<QObject> speakers(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("bundle"), QStringLiteral("folder of a stored transcription"));
    parser.addOption({QStringLiteral("speakers"), QStringLiteral("expected number of speakers; 0 finds it"),
                      QStringLiteral("n")});
    parser.addOption({QStringLiteral("json"), QStringLiteral("the spans and the speaker text as JSON")});
    bool countOk = true;
    const bool parsed = parser.parse(args);
    const int count = parser.isSet(QStringLiteral("speakers")) ? parser.value(QStringLiteral("speakers")).toInt(&countOk) : 0;
    if (!parsed || parser.positionalArguments().size() != 1 || !countOk || count < 0) {
        finish(usageError(parser));
        return nullptr;
    }

    auto app = std::make_unique<AppModel>();
    const std::optional<HistoryItem> stored = storedItem(*app, parser.positionalArguments().constFirst());
    if (!stored) {
        finish(Failed);
        return nullptr;
    }
    SpeakerJob::Overrides overrides;
    if (parser.isSet(QStringLiteral("speakers")))
        overrides.speakerCount = count;
    auto run = std::make_unique<SpeakersRun>(std::move(app), *stored, std::move(overrides),
                                             parser.isSet(QStringLiteral("json")));
    run->start();
    return run;
}

} // namespace Cli
