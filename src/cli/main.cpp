// sagwerk-cli: the headless front end over the core library for scripted and batch work.
#include "cli/Commands.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Morvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Sagwerk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SAGWERK_VERSION));

    QStringList args = QCoreApplication::arguments();
    const QString command = args.value(1);
    args.removeAt(0);

    if (command == QLatin1String("transcribe"))
        return Cli::transcribe(args);
    if (command == QLatin1String("list"))
        return Cli::list(args);
    if (command == QLatin1String("models"))
        return Cli::models(args);
    if (command == QLatin1String("download"))
        return Cli::download(args);
    if (command == QLatin1String("export"))
        return Cli::exportBundle(args);
    if (command == QLatin1String("interview"))
        return Cli::interview(args);
    if (command == QLatin1String("smooth"))
        return Cli::smooth(args);
    if (command == QLatin1String("speakers"))
        return Cli::speakers(args);
    if (command == QLatin1String("import-model"))
        return Cli::importModel(args);
    if (command == QLatin1String("--version")) {
        std::printf("sagwerk-cli %s\n", SAGWERK_VERSION);
        return 0;
    }
    std::fprintf(stderr, "%s", qPrintable(Cli::usage()));
    return command.isEmpty() || command == QLatin1String("--help") || command == QLatin1String("help") ? 0 : 2;
}
