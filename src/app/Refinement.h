#pragma once

#include <QFuture>
#include <QObject>
#include <QString>

#include <optional>

struct HistoryItem;

// The AI refinement of an item at one level: the text into the bundle when it is done;
// what becomes of the item goes out through the signals. At most one runs per item; it
// cannot be cancelled and goes on when the user moves to another item.
class Refinement : public QObject {
    Q_OBJECT

public:
    // What a scripted run may choose instead of the active model and its key; the
    // settings stay untouched.
    struct Overrides {
        std::optional<QString> modelId;
        std::optional<QString> apiKey;
    };

    using QObject::QObject;

    // The future ends when the item is back at rest. `key` and `modelId` are fixed for
    // this run.
    QFuture<void> start(const HistoryItem &item, qint64 level, const QString &key, const QString &modelId);

signals:
    void began(const QString &itemId, qint64 level);
    void finished(const QString &itemId, qint64 level, const QString &text);
    void failed(const QString &itemId, const QString &message);
    void keyMissing(const QString &message);
};
