#include "cli/Commands.h"
#include "cli/Interrupt.h"

#include "app/AppModel.h"
#include "capture/InterviewSession.h"
#include "core/Tr.h"
#include "engine/ModelStore.h"
#include "export/TextForms.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

#include <cstdio>

namespace Cli {

int interview(const QStringList &args)
{
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("duration"), QStringLiteral("seconds to record"), QStringLiteral("seconds")});
    parser.addOption({QStringLiteral("live-speakers"), QStringLiteral("separate speakers while recording")});
    parser.addOption({QStringLiteral("language"), QStringLiteral("language code"), QStringLiteral("code")});
    bool durationOk = false;
    const double seconds = parser.parse(args) ? parser.value(QStringLiteral("duration")).toDouble(&durationOk) : 0;
    if (!durationOk || seconds <= 0 || !parser.positionalArguments().isEmpty()) {
        if (!parser.errorText().isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
        std::fprintf(stderr, "%s", qPrintable(usage()));
        return Usage;
    }

    AppModel app;
    const WhisperModel model = app.selectedModel();
    if (!app.modelStore()->isInstalled(model)) {
        // The same words as the application's.
        std::fprintf(stderr, "Modell %s ist nicht installiert. Bitte in den Einstellungen herunterladen.\n",
                     qPrintable(model.name));
        return Failed;
    }
    const QString language = parser.isSet(QStringLiteral("language")) ? parser.value(QStringLiteral("language"))
                                                                       : app.language();
    const bool liveSpeakers = parser.isSet(QStringLiteral("live-speakers")) || app.interviewLiveSpeakers();

    InterviewSession session;
    qsizetype printed = 0;
    QObject::connect(&session, &InterviewSession::segmentsChanged, &session, [&] {
        for (; printed < session.segments().size(); ++printed) {
            const TranscriptSegment &s = session.segments()[printed];
            std::printf("[%s] %s\n", qPrintable(TextForms::minuteStamp(s.startMs)), qPrintable(s.text));
            std::fflush(stdout);
        }
    });

    int exitCode = Ok;
    const auto stop = [&] {
        if (!session.isRecording())
            return;
        session.stop().then(&app, [&](const std::optional<InterviewResult> &value) {
            if (!value) {
                QCoreApplication::exit(Failed);
                return;
            }
            app.finishInterview(*value).then(&app, [&] {
                // An interview without segments stores nothing.
                if (app.current())
                    std::printf("%s\n", qPrintable(app.current()->bundleURL.value_or(QString())));
                QCoreApplication::exit(exitCode);
            });
        });
    };
    // Ctrl-C ends the recording early and keeps what was said.
    QPointer<InterviewSession> guard(&session);
    Interrupt::onSignal([guard, stop] { QMetaObject::invokeMethod(guard.data(), stop, Qt::QueuedConnection); });

    QTimer::singleShot(0, &session, [&] {
        session.start(app.modelStore()->modelsDir() + u'/' + model.fileName, language, liveSpeakers);
        if (!session.isRecording()) {
            std::fprintf(stderr, "%s\n",
                         qPrintable(session.permissionDenied()
                                        ? Tr::tr("Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → "
                                                 "Mikrofon erlauben.")
                                        : session.status()));
            QCoreApplication::exit(Failed);
            return;
        }
        QTimer::singleShot(qint64(seconds * 1000), &session, stop);
    });
    return QCoreApplication::exec();
}

} // namespace Cli
