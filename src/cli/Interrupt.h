#pragma once

#include "engine/TranscribeControl.h"

// Ctrl-C and SIGTERM cancel the given job through its control instead of killing the
// process, so that temporary files are cleaned up on the way out.
namespace Interrupt {
void cancelOnSignal(TranscribeControlPtr control);
}
