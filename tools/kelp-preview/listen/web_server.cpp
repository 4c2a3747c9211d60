#include "tools/kelp-preview/listen/web_server.h"

#include <microhttpd.h>

#include <chrono>
#include <cstring>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>

namespace kelp_listen {
namespace {

constexpr unsigned kConnections = 32;
constexpr unsigned kIdleSeconds = 15;
constexpr std::size_t kMemoryOfOne = 32 << 10;

std::optional<std::string> header(MHD_Connection* connection, const char* name) {
    const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

MHD_Result send(MHD_Connection* connection, Answer& answer) {
    MHD_Response* response =
        answer.file.descriptor.isOpen()
            ? MHD_create_response_from_fd64(answer.file.size, answer.file.descriptor.get())
            : MHD_create_response_from_buffer(answer.body.size(), answer.body.data(),
                                              MHD_RESPMEM_MUST_COPY);
    if (response == nullptr) {
        return MHD_NO;
    }
    answer.file.descriptor.release();  // the response closes it
    for (const auto& [name, value] : answer.headers) {
        MHD_add_response_header(response, name.c_str(), value.c_str());
    }
    const MHD_Result result = MHD_queue_response(connection, answer.status, response);
    MHD_destroy_response(response);
    return result;
}

/// No exception may leave it: its caller is C.
MHD_Result onRequest(void* site, MHD_Connection* connection, const char* path, const char* method,
                     const char* /*version*/, const char* /*upload*/, std::size_t* /*uploadSize*/,
                     void** /*ofConnection*/) {
    try {
        Answer answer = static_cast<const WebSite*>(site)->answer(
            {method, path, header(connection, MHD_HTTP_HEADER_HOST),
             header(connection, MHD_HTTP_HEADER_IF_NONE_MATCH)});
        return send(connection, answer);
    } catch (const std::exception&) {
        return MHD_NO;
    }
}

/// Paths are taken as they are sent: ours have nothing to unescape.
std::size_t leaveEscapes(void* /*site*/, MHD_Connection* /*connection*/, char* text) {
    return std::strlen(text);
}

}  // namespace

WebServer::WebServer(kelp_preview::Descriptor listener, const WebSite& site)
    : daemon_(MHD_start_daemon(
          MHD_USE_EPOLL, 0, nullptr, nullptr, onRequest, const_cast<WebSite*>(&site),
          MHD_OPTION_LISTEN_SOCKET, listener.get(), MHD_OPTION_CONNECTION_LIMIT, kConnections,
          MHD_OPTION_CONNECTION_TIMEOUT, kIdleSeconds, MHD_OPTION_CONNECTION_MEMORY_LIMIT,
          kMemoryOfOne, MHD_OPTION_STRICT_FOR_CLIENT, 1, MHD_OPTION_UNESCAPE_CALLBACK, leaveEscapes,
          nullptr, MHD_OPTION_END)) {
    if (daemon_ == nullptr) {
        throw std::runtime_error("the web page cannot be served");
    }
    listener.release();  // the daemon closes it
    events_ = MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_EPOLL_FD)->epoll_fd;
}

WebServer::~WebServer() {
    MHD_stop_daemon(daemon_);
}

void WebServer::addTo(PollSet& polls) const {
    polls.add(events_);
    MHD_UNSIGNED_LONG_LONG milliseconds = 0;
    if (MHD_get_timeout(daemon_, &milliseconds) == MHD_YES) {
        polls.until(Clock::now() + std::chrono::milliseconds(milliseconds));
    }
}

void WebServer::serve() {
    MHD_run(daemon_);
}

}  // namespace kelp_listen
