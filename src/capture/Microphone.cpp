#include "capture/Microphone.h"

#include <QCoreApplication>
#include <QPermission>

namespace Microphone {

void whenAllowed(QObject *context, const std::function<void()> &granted, const std::function<void()> &denied)
{
    QMicrophonePermission microphone;
    switch (qApp->checkPermission(microphone)) {
    case Qt::PermissionStatus::Undetermined:
        qApp->requestPermission(microphone, context, [granted, denied](const QPermission &answer) {
            if (answer.status() == Qt::PermissionStatus::Granted)
                granted();
            else
                denied();
        });
        return;
    case Qt::PermissionStatus::Denied:
        denied();
        return;
    case Qt::PermissionStatus::Granted:
        granted();
        return;
    }
}

} // namespace Microphone
