#include "cli/Run.h"

#include "cli/Commands.h"
#include "cli/Interrupt.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QPointer>

#include <cstdio>

namespace Cli {

Run::Run()
{
    // The watcher thread only posts; the guard is read on the main thread.
    Interrupt::onSignal([guard = QPointer<Run>(this)] {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [guard] {
                if (guard && !guard->m_ended)
                    guard->interrupted();
            },
            Qt::QueuedConnection);
    });
}

void Run::end(int status)
{
    if (m_ended)
        return;
    m_ended = true;
    finish(status);
}

void finish(int status)
{
    QCoreApplication::exit(status);
}

int usageError(const QCommandLineParser &parser)
{
    if (!parser.errorText().isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(parser.errorText()));
    std::fprintf(stderr, "%s", qPrintable(usage()));
    return Usage;
}

} // namespace Cli
