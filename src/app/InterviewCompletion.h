#pragma once

#include <QFuture>

class AppModel;
struct InterviewResult;

// A finished interview becomes a stored transcript at the top of the history, on show at
// once. The bundle, with its copy of the recording, is written on the task pool.
class InterviewCompletion {
public:
    // Nothing is stored for an interview without segments. Where the bundle cannot be
    // made, nothing is added and the recording stays in the temporary folder. The future
    // ends when the item is in the history (or nothing will be).
    static QFuture<void> finish(AppModel &app, const InterviewResult &interview);
};
