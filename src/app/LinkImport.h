#pragma once

#include "core/TranscribeControl.h"

#include <QFuture>
#include <QObject>
#include <QString>
#include <QUrl>

#include <optional>

class AppModel;

// A pasted link on its way to a staged job: its resolution, the download
// with its progress, and staging as if the file had been dropped. It owns `linkBusy`,
// `linkStatus` and `linkProgress` of the model; at most one runs at a time.
class LinkImport : public QObject {
    Q_OBJECT

public:
    explicit LinkImport(AppModel &app);
    // Ends a running resolution.
    ~LinkImport() override;

    // Returns at once; does nothing while a job or another link runs.
    void start(const QString &link);

private:
    void download(const QUrl &url, const QString &title);
    void end(const std::optional<QString> &error);

    AppModel &m_app;
    // Ends the running resolution when this object goes.
    TranscribeControlPtr m_control;
};
