#include "app/delivery.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace kelp_app {
namespace {

// A device that takes so many bytes.
std::string taken;
std::size_t room = 0;

class Delivery : public testing::Test {
  protected:
    Delivery() {
        taken.clear();
        papplDeviceAddScheme(
            "kelptest", PAPPL_DEVTYPE_CUSTOM_LOCAL, nullptr,
            [](pappl_device_t*, const char*, const char*) { return true; }, [](pappl_device_t*) {},
            nullptr,
            [](pappl_device_t*, const void* bytes, size_t size) -> ssize_t {
                if (taken.size() + size > room) {
                    return -1;
                }
                taken.append(static_cast<const char*>(bytes), size);
                return static_cast<ssize_t>(size);
            },
            nullptr, nullptr);
        device.reset(papplDeviceOpen(
            "kelptest://device/", "job", [](const char*, void*) {}, nullptr));
    }

    std::unique_ptr<pappl_device_t, decltype(&papplDeviceClose)> device{nullptr, papplDeviceClose};
};

TEST_F(Delivery, IsDoneWhenTheDeviceHasAllBytes) {
    ASSERT_NE(device, nullptr);
    room = 1'000'000;
    std::string all;
    for (const std::size_t size : {1U, 100U, 8191U, 8192U, 8193U, 300'000U}) {
        const std::string bytes(size, static_cast<char>('a' + size % 26));
        all += bytes;
        EXPECT_TRUE(deliver(device.get(), bytes));
        EXPECT_EQ(taken, all);
    }
}

TEST_F(Delivery, FailsWhereTheDeviceDoesNotTakeThemAll) {
    ASSERT_NE(device, nullptr);
    room = 99;
    EXPECT_TRUE(deliver(device.get(), std::string(99, 'x')));
    EXPECT_FALSE(deliver(device.get(), "y"));
    EXPECT_FALSE(deliver(device.get(), std::string(300'000, 'z')));
}

}  // namespace
}  // namespace kelp_app
