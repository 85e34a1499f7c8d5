#pragma once

#include <QFuture>
#include <QString>

#include <optional>

class AppModel;
struct HistoryItem;

// The AI refinement of an item at one level: the item's `smoothingLevel` while it runs,
// the text into `smoothed` and the bundle when it is done, the error into `errorMessage`
// when it fails. At most one runs per item; it cannot be cancelled and goes on when the
// user moves to another item.
class Refinement {
public:
    // What a scripted run may choose instead of the active model and its key; the
    // settings stay untouched.
    struct Overrides {
        std::optional<QString> modelId;
        std::optional<QString> apiKey;
    };
    // The future ends when the item is back at rest.
    static QFuture<void> start(AppModel &app, const HistoryItem &item, qint64 level, const Overrides &overrides = {});
};
