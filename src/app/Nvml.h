#pragma once

#include <optional>

// GPU utilisation from the NVIDIA management library. The library is opened at run time
// (libnvidia-ml.so.1), so that the program runs the same on machines without the driver.
namespace Nvml {

// The utilisation in percent (0 to 100) of the first device that answers; nothing when
// the library is missing, does not start, or no device answers.
std::optional<double> utilization();

} // namespace Nvml
