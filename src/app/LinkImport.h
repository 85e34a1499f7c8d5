#pragma once

#include "core/TranscribeControl.h"

#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QString>
#include <QUrl>

#include <optional>

// A pasted link on its way to a staged job: its resolution and the download with its
// progress. It owns its busy state, status and progress; the downloaded file and the
// failure go out through its signals. At most one runs at a time.
class LinkImport : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY isBusyChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)

public:
    explicit LinkImport(QObject *parent = nullptr);
    // Ends a running resolution.
    ~LinkImport() override;

    bool isBusy() const { return m_isBusy; }
    const std::optional<QString> &status() const { return m_status.value(); }
    double progress() const { return m_progress; }

    // Returns at once; does nothing while another link runs. `link` is trimmed and not empty.
    void start(const QString &link);
    // Ends the resolution or the download without a word; a partial file goes too.
    void cancel();

signals:
    void isBusyChanged();
    void statusChanged();
    void progressChanged();
    // After the busy state has ended.
    void downloaded(const QString &path, const QString &title);
    void failed(const QString &message);

private:
    void download(const QUrl &url, const QString &title);
    void end(const std::optional<QString> &error);

    // Ends the running resolution when this object goes.
    TranscribeControlPtr m_control;
    QPointer<QObject> m_downloader;

    Q_OBJECT_BINDABLE_PROPERTY(LinkImport, bool, m_isBusy, &LinkImport::isBusyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LinkImport, std::optional<QString>, m_status, &LinkImport::statusChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LinkImport, double, m_progress, &LinkImport::progressChanged)
};
