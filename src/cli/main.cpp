// sagwerk-cli: the headless front end over the core library for scripted and batch work.
#include "cli/Commands.h"

#include "app/LanguageManager.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

namespace {

int quickCommand(const QString &command, const QStringList &args)
{
    if (command == QLatin1String("list"))
        return Cli::list(args);
    if (command == QLatin1String("models"))
        return Cli::models(args);
    if (command == QLatin1String("export"))
        return Cli::exportBundle(args);
    if (command == QLatin1String("import-model"))
        return Cli::importModel(args);
    if (command == QLatin1String("--version")) {
        std::printf("sagwerk-cli %s\n", SAGWERK_VERSION);
        return Cli::Ok;
    }
    std::fprintf(stderr, "%s", qPrintable(Cli::usage()));
    return command.isEmpty() || command == QLatin1String("--help") || command == QLatin1String("help") ? Cli::Ok
                                                                                                       : Cli::Usage;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Morvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Sagwerk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SAGWERK_VERSION));

    // A command line speaks the language of the user's locale (LANG, LC_MESSAGES), not
    // the one chosen in the application's settings.
    LanguageManager::instance().fix(QStringLiteral("system"));

    QStringList args = QCoreApplication::arguments();
    const QString command = args.value(1);
    args.removeAt(0);

    // Every command runs on this one event loop and ends it with its exit status; one
    // that waits for work hands back the object that runs it, which goes before the
    // application object does.
    std::unique_ptr<QObject> running;
    QTimer::singleShot(0, &app, [&] {
        if (command == QLatin1String("transcribe"))
            running = Cli::transcribe(args);
        else if (command == QLatin1String("batch"))
            running = Cli::batch(args);
        else if (command == QLatin1String("download"))
            running = Cli::download(args);
        else if (command == QLatin1String("smooth"))
            running = Cli::smooth(args);
        else if (command == QLatin1String("interview"))
            running = Cli::interview(args);
        else if (command == QLatin1String("speakers"))
            running = Cli::speakers(args);
        else
            Cli::finish(quickCommand(command, args));
    });
    const int status = app.exec();
    running.reset();
    return status;
}
