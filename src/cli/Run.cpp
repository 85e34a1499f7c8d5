#include "cli/Run.h"

#include "cli/Commands.h"
#include "cli/Interrupt.h"

#include <QCoreApplication>
#include <QPointer>

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

} // namespace Cli
