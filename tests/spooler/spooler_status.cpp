#include "tests/spooler/spooler_status.h"

#include <cups/cups.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace kelp_test {
namespace {

struct CloseConnection {
    void operator()(http_t* connection) const { httpClose(connection); }
};
using Connection = std::unique_ptr<http_t, CloseConnection>;

struct DeleteMessage {
    void operator()(ipp_t* message) const { ippDelete(message); }
};
using Message = std::unique_ptr<ipp_t, DeleteMessage>;

Connection connect(const std::filesystem::path& socket) {
    return Connection(httpConnect2(socket.c_str(), 0, nullptr, AF_UNSPEC, HTTP_ENCRYPTION_NEVER, 1,
                                   30000, nullptr));
}

Message ask(const std::filesystem::path& socket, ipp_op_t operation, const char* uri_name,
            const std::string& uri) {
    const Connection connection = connect(socket);
    if (!connection) {
        throw std::runtime_error("no spooler at " + socket.string());
    }
    ipp_t* request = ippNewRequest(operation);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, uri_name, nullptr, uri.c_str());
    Message response(cupsDoRequest(connection.get(), request, "/"));
    if (!response || ippGetStatusCode(response.get()) >= IPP_STATUS_ERROR_BAD_REQUEST) {
        throw std::runtime_error(uri + ": " + cupsLastErrorString());
    }
    return response;
}

ipp_attribute_t* find(const Message& message, const char* name) {
    return ippFindAttribute(message.get(), name, IPP_TAG_ZERO);
}

// All values of the attribute, or nothing.
std::string text(const Message& message, const char* name) {
    ipp_attribute_t* attribute = find(message, name);
    if (attribute == nullptr) {
        return {};
    }
    std::array<char, 4096> buffer{};
    ippAttributeString(attribute, buffer.data(), buffer.size());
    return buffer.data();
}

int number(const Message& message, const char* name) {
    ipp_attribute_t* attribute = find(message, name);
    if (attribute == nullptr) {
        throw std::runtime_error(std::string("the spooler does not tell ") + name);
    }
    return ippGetInteger(attribute, 0);
}

}  // namespace

JobStatus ask_job(const std::filesystem::path& socket, int job) {
    const Message answer = ask(socket, IPP_OP_GET_JOB_ATTRIBUTES, "job-uri",
                               "ipp://localhost/jobs/" + std::to_string(job));
    return {static_cast<ipp_jstate_t>(number(answer, "job-state")),
            text(answer, "job-state-reasons"), text(answer, "job-printer-state-message")};
}

QueueStatus ask_queue(const std::filesystem::path& socket, const std::string& queue) {
    const Message answer = ask(socket, IPP_OP_GET_PRINTER_ATTRIBUTES, "printer-uri",
                               "ipp://localhost/printers/" + queue);
    ipp_attribute_t* accepting = find(answer, "printer-is-accepting-jobs");
    return {static_cast<ipp_pstate_t>(number(answer, "printer-state")),
            text(answer, "printer-state-reasons"), text(answer, "printer-state-message"),
            accepting != nullptr && ippGetBoolean(accepting, 0) != 0};
}

bool answers(const std::filesystem::path& socket) {
    return connect(socket) != nullptr;
}

}  // namespace kelp_test
