#include "tools/kelp-preview/listen/job_receiver.h"

#include <sys/socket.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string_view>
#include <utility>

#include "tools/kelp-preview/listen/listening_socket.h"

namespace kelp_listen {
namespace {

constexpr std::size_t kReadAtOnce = 1 << 16;

void tell(const std::string& sender, const std::string& what) {
    std::fprintf(stderr, "kelp-preview: job from %s %s\n", sender.c_str(), what.c_str());
}

}  // namespace

JobReceiver::JobReceiver(kelp_preview::Descriptor listener, std::string folder,
                         const ReceiverLimits& limits)
    : listener_(std::move(listener)),
      folder_(std::move(folder)),
      limits_(limits),
      buffer_(kReadAtOnce, '\0') {}

void JobReceiver::addTo(PollSet& polls) const {
    if (hasRoom()) {
        if (acceptAgainAt_) {
            polls.until(acceptAgainAt_);
        } else {
            polls.add(listener_.get());
        }
    }
    for (const Connection& connection : connections_) {
        polls.add(connection.socket.get());
        polls.until(connection.silentSince + std::chrono::seconds(limits_.idleSeconds));
    }
}

void JobReceiver::serve(const PollSet& polls) {
    for (auto at = connections_.begin(); at != connections_.end();) {
        After after = After::kGoOn;
        if (polls.isReady(at->socket.get())) {
            after = receive(*at);
        } else if (Clock::now() >= at->silentSince + std::chrono::seconds(limits_.idleSeconds)) {
            end(*at, "the sender was silent for " + std::to_string(limits_.idleSeconds) +
                         " s: ended there");
            after = After::kEnded;
        }
        at = after == After::kEnded ? connections_.erase(at) : std::next(at);
    }
    if (polls.isReady(listener_.get())) {
        accept();
    }
    if (acceptAgainAt_ && Clock::now() >= *acceptAgainAt_) {
        acceptAgainAt_.reset();
    }
}

void JobReceiver::accept() {
    sockaddr_storage address{};
    socklen_t length = sizeof address;
    kelp_preview::Descriptor socket(accept4(listener_.get(), reinterpret_cast<sockaddr*>(&address),
                                            &length, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (socket.isOpen()) {
        connections_.push_back(
            {std::move(socket), numericHost(address, length), Clock::now(), nullptr});
    } else if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
        // It waits in line; trying at once again would only burn time.
        std::fprintf(stderr, "kelp-preview: a connection must wait: %s\n", std::strerror(errno));
        acceptAgainAt_ = Clock::now() + std::chrono::seconds(1);
    }
}

JobReceiver::After JobReceiver::receive(Connection& connection) {
    const ssize_t count = recv(connection.socket.get(), buffer_.data(), buffer_.size(), 0);
    if (count > 0) {
        connection.silentSince = Clock::now();
        return take(connection, static_cast<std::size_t>(count));
    }
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return After::kGoOn;
    }
    end(connection,
        count == 0 ? std::string() : std::string("the connection broke: ") + std::strerror(errno));
    return After::kEnded;
}

JobReceiver::After JobReceiver::take(Connection& connection, std::size_t count) {
    const std::uint64_t before = connection.files ? connection.files->bytes() : 0;
    if (count > limits_.jobBytes - before) {
        tell(connection.sender,
             "refused: over the limit of " + std::to_string(limits_.jobBytes) + " bytes");
        return After::kEnded;
    }
    try {
        if (!connection.files) {
            connection.files = std::make_unique<UnfinishedJob>(folder_);
        }
        connection.files->append(std::string_view(buffer_).substr(0, count));
    } catch (const std::exception& error) {
        tell(connection.sender, std::string("refused: ") + error.what());
        return After::kEnded;
    }
    return After::kGoOn;
}

void JobReceiver::end(Connection& connection, const std::string& remark) {
    if (!connection.files) {
        tell(connection.sender, "without a byte" + (remark.empty() ? "" : ": " + remark));
        return;
    }
    try {
        connection.files->endStream();
        received_.push_back(
            {std::move(connection.files), connection.sender, remark, std::move(connection.socket)});
    } catch (const std::exception& error) {
        tell(connection.sender, std::string("refused: ") + error.what());
    }
}

void JobReceiver::stop() {
    listener_.reset();
    for (const Connection& connection : connections_) {
        tell(connection.sender, "dropped: it was not whole");
    }
    connections_.clear();
}

}  // namespace kelp_listen
