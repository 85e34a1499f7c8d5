#include "cli/Commands.h"
#include "cli/Run.h"

#include "app/AppModel.h"
#include "app/InterviewJob.h"
#include "core/Tr.h"
#include "app/ModelStore.h"
#include "export/TextForms.h"

#include <QCommandLineParser>
#include <QTimer>

#include <cstdio>

namespace Cli {

namespace {

// One interview from the default input: each segment printed as it arrives, the whole
// stored in the history when the time is up. Ctrl-C ends the recording early and keeps
// what was said.
class InterviewRun : public Run {
public:
    explicit InterviewRun(std::unique_ptr<AppModel> app) : m_app(std::move(app)), m_session(m_app->interview())
    {
        connect(&m_session, &InterviewJob::segmentsChanged, this, [this] {
            for (; m_printed < m_session.segments().size(); ++m_printed) {
                const TranscriptSegment &s = m_session.segments()[m_printed];
                std::printf("[%s] %s\n", qPrintable(TextForms::minuteStamp(s.startMs)), qPrintable(s.text));
                std::fflush(stdout);
            }
        });
    }

    void start(const std::optional<QString> &language, std::optional<bool> liveSpeakers, double seconds)
    {
        m_app->startInterview(language, liveSpeakers);
        if (!m_session.isRecording()) {
            std::fprintf(stderr, "%s\n",
                         qPrintable(m_session.permissionDenied()
                                        ? Tr::tr("Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → "
                                                 "Mikrofon erlauben.")
                                        : m_session.status()));
            return end(Failed);
        }
        QTimer::singleShot(qint64(seconds * 1000), this, [this] { stop(); });
    }

protected:
    void interrupted() override { stop(); }

private:
    void stop()
    {
        if (!m_session.isRecording())
            return;
        m_app->stopInterview().then(this, [this](bool recorded) {
            if (!recorded)
                return end(Failed);
            // An interview without segments stores nothing.
            if (m_app->current())
                std::printf("%s\n", qPrintable(m_app->current()->bundleURL.value_or(QString())));
            end(Ok);
        });
    }

    const std::unique_ptr<AppModel> m_app;
    InterviewJob &m_session;
    qsizetype m_printed = 0;
};

} // namespace

std::unique_ptr<QObject> interview(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("duration"), QStringLiteral("seconds to record"), QStringLiteral("seconds")});
    parser.addOption({QStringLiteral("live-speakers"), QStringLiteral("separate speakers while recording")});
    parser.addOption({QStringLiteral("language"), QStringLiteral("language code"), QStringLiteral("code")});
    bool durationOk = false;
    const double seconds = parser.parse(args) ? parser.value(QStringLiteral("duration")).toDouble(&durationOk) : 0;
    if (!durationOk || seconds <= 0 || !parser.positionalArguments().isEmpty()) {
        finish(usageError(parser));
        return nullptr;
    }

    auto app = std::make_unique<AppModel>();
    const WhisperModel model = app->selectedModel();
    if (!app->modelStore()->isInstalled(model)) {
        // The same words as the application's.
        std::fprintf(stderr, "Modell %s ist nicht installiert. Bitte in den Einstellungen herunterladen.\n",
                     qPrintable(model.name));
        finish(Failed);
        return nullptr;
    }
    const std::optional<QString> language = parser.isSet(QStringLiteral("language"))
        ? std::optional(parser.value(QStringLiteral("language")))
        : std::nullopt;
    const std::optional<bool> liveSpeakers = parser.isSet(QStringLiteral("live-speakers")) ? std::optional(true)
                                                                                          : std::nullopt;
    auto run = std::make_unique<InterviewRun>(std::move(app));
    run->start(language, liveSpeakers, seconds);
    return run;
}

} // namespace Cli
