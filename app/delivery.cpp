#include "app/delivery.h"

#include <cstddef>

namespace kelp_app {

namespace {

std::size_t writtenTo(pappl_device_t* device) {
    pappl_devmetrics_t metrics{};
    papplDeviceGetMetrics(device, &metrics);
    return metrics.write_bytes;
}

}  // namespace

bool deliver(pappl_device_t* device, std::string_view bytes) {
    // A flush tells nothing, and a write that only fills the buffer cannot know: what was written
    // is in the device's own count.
    const std::size_t before = writtenTo(device);
    if (papplDeviceWrite(device, bytes.data(), bytes.size()) < 0) {
        return false;
    }
    papplDeviceFlush(device);
    return writtenTo(device) - before == bytes.size();
}

}  // namespace kelp_app
