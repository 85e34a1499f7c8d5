#pragma once

#include "core/HistoryItem.h"

#include <QFuture>

#include <optional>

struct InterviewResult;

// A finished interview becomes a stored transcript. The bundle, with its copy of the
// recording, is written on the task pool.
namespace InterviewCompletion {
// Nothing is stored for an interview without segments. Where the bundle cannot be made,
// nothing comes back and the recording stays in the temporary folder.
QFuture<std::optional<HistoryItem>> store(const InterviewResult &interview);
} // namespace InterviewCompletion
