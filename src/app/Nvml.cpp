#include "app/Nvml.h"

#include <dlfcn.h>

#include <algorithm>

namespace Nvml {

namespace {

// The library's C interface, as far as it is used; every call returns 0 on success.
struct Rates {
    unsigned int gpu;
    unsigned int memory;
};
using Device = void *;

struct Library {
    int (*count)(unsigned int *) = nullptr;
    int (*handle)(unsigned int, Device *) = nullptr;
    int (*rates)(Device, Rates *) = nullptr;
    bool ready = false;
};

template <typename F>
F symbol(void *library, const char *name)
{
    return reinterpret_cast<F>(dlsym(library, name));
}

// Opened and started once, on first use, and kept for the life of the process.
const Library &library()
{
    static const Library loaded = [] {
        Library l;
        void *so = dlopen("libnvidia-ml.so.1", RTLD_NOW | RTLD_LOCAL);
        if (!so)
            return l;
        auto init = symbol<int (*)()>(so, "nvmlInit_v2");
        l.count = symbol<decltype(l.count)>(so, "nvmlDeviceGetCount_v2");
        l.handle = symbol<decltype(l.handle)>(so, "nvmlDeviceGetHandleByIndex_v2");
        l.rates = symbol<decltype(l.rates)>(so, "nvmlDeviceGetUtilizationRates");
        l.ready = init && l.count && l.handle && l.rates && init() == 0;
        return l;
    }();
    return loaded;
}

} // namespace

std::optional<double> utilization()
{
    const Library &l = library();
    unsigned int count = 0;
    if (!l.ready || l.count(&count) != 0)
        return std::nullopt;
    for (unsigned int i = 0; i < count; ++i) {
        Device device = nullptr;
        Rates rates{};
        if (l.handle(i, &device) == 0 && l.rates(device, &rates) == 0)
            return std::clamp(double(rates.gpu), 0.0, 100.0);
    }
    return std::nullopt;
}

} // namespace Nvml
