#include "app/socket_device.h"

#include <cups/cups.h>

#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

namespace kelp_app {

namespace {

constexpr std::string_view kTheirs = "socket://";
constexpr std::string_view kOurs = "kelpip://";
constexpr int kUsualPort = 9100;
static_assert(kOurs.size() == kTheirs.size());

PrinterSocket* dataOf(pappl_device_t* device) {
    return static_cast<PrinterSocket*>(papplDeviceGetData(device));
}

bool openDevice(pappl_device_t* device, const char* uri, const char* /*job*/) {
    try {
        std::optional<PrinterAddress> address = addressOf(uri);
        if (!address) {
            papplDeviceError(device, "The device \"%s\" is no address of a printer.", uri);
            return false;
        }
        papplDeviceSetData(device, new PrinterSocket(std::move(*address)));
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void closeDevice(pappl_device_t* device) {
    std::unique_ptr<PrinterSocket>(dataOf(device)).reset();
    papplDeviceSetData(device, nullptr);
}

/// Whatever does not know the connection gets one try.
class Once : public Sender {
  public:
    bool isPatient() override { return !isTried_; }
    void isAway(const std::string& /*why*/) override { isTried_ = true; }
    void isThere() override {}

  private:
    bool isTried_ = false;
};

ssize_t writeDevice(pappl_device_t* device, const void* bytes, size_t size) {
    Once once;
    const bool isSent = dataOf(device)->send({static_cast<const char*>(bytes), size}, once);
    return isSent ? static_cast<ssize_t>(size) : -1;
}

ssize_t readDevice(pappl_device_t* /*device*/, void* /*buffer*/, size_t /*size*/) {
    return -1;
}

}  // namespace

void addSocketDevices() {
    // Else the framework would take ours for all that there are, and not add its own.
    papplDeviceIsSupported("socket://localhost");
    papplDeviceAddScheme("kelpip", PAPPL_DEVTYPE_CUSTOM_NETWORK, nullptr, openDevice, closeDevice,
                         readDevice, writeDevice, nullptr, nullptr);
}

void useOwnSocket(pappl_printer_t* printer) {
    const char* uri = papplPrinterGetDeviceURI(printer);
    if (std::string_view(uri).starts_with(kTheirs)) {
        // The printer's own text, of its own making. There is no call to set it.
        std::memcpy(const_cast<char*>(uri), kOurs.data(), kOurs.size());
    }
}

std::optional<PrinterAddress> addressOf(const char* deviceUri) {
    char scheme[32];
    char user[256];
    char host[256];
    char resource[256];
    int port = 0;
    if (!std::string_view(deviceUri).starts_with(kOurs) ||
        httpSeparateURI(HTTP_URI_CODING_ALL, deviceUri, scheme, sizeof scheme, user, sizeof user,
                        host, sizeof host, &port, resource, sizeof resource) < HTTP_URI_STATUS_OK) {
        return std::nullopt;
    }
    return PrinterAddress{host, port > 0 ? port : kUsualPort};
}

PrinterSocket* socketOf(pappl_printer_t* printer, pappl_device_t* device) {
    return std::string_view(papplPrinterGetDeviceURI(printer)).starts_with(kOurs) ? dataOf(device)
                                                                                  : nullptr;
}

}  // namespace kelp_app
