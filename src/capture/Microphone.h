#pragma once

#include <functional>

class QObject;

namespace Microphone {

// Asks the desktop for the microphone, where it asks at all, and calls `granted` or
// `denied` (at once when the answer is known, else once it comes, on `context`'s thread).
void whenAllowed(QObject *context, const std::function<void()> &granted, const std::function<void()> &denied);

} // namespace Microphone
