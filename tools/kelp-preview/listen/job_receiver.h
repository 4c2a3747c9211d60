#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_RECEIVER_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_RECEIVER_H

#include <cstddef>
#include <list>
#include <memory>
#include <optional>
#include <string>

#include "preview/descriptor.h"
#include "tools/kelp-preview/listen/listen_options.h"
#include "tools/kelp-preview/listen/poll_set.h"
#include "tools/kelp-preview/listen/unfinished_job.h"

namespace kelp_listen {

/// A job whose last byte has come.
struct ReceivedJob {
    std::unique_ptr<UnfinishedJob> files;
    std::string sender;  ///< its address
    std::string remark;  ///< how it ended, if not by the sender's end of stream
    kelp_preview::Descriptor
        connection;  ///< open until the job is done: some senders wait for that
};

/// Takes jobs as network label printers do: what comes from a connection, up to the sender's end of
/// stream, is one job. What does not become a job is told on standard error.
class JobReceiver {
  public:
    /// @param listener non-blocking
    /// @param folder of the jobs
    JobReceiver(kelp_preview::Descriptor listener, std::string folder,
                const ReceiverLimits& limits);

    void addTo(PollSet& polls) const;
    /// Takes what has come, without waiting.
    void serve(const PollSet& polls);

    /// The received job that is to be done next, or null.
    ReceivedJob* nextJob() { return received_.empty() ? nullptr : &received_.front(); }
    /// It is done: its connection is closed.
    void finishJob() { received_.pop_front(); }

    /// Takes no jobs any more and drops those that are not whole.
    void stop();

  private:
    struct Connection {
        kelp_preview::Descriptor socket;
        std::string sender;
        Clock::time_point silentSince;
        std::unique_ptr<UnfinishedJob> files;  ///< null before the first byte
    };
    enum class After { kGoOn, kEnded };

    bool hasRoom() const { return connections_.size() + received_.size() < limits_.connections; }
    void accept();
    After receive(Connection& connection);
    After take(Connection& connection, std::size_t count);
    void end(Connection& connection, const std::string& remark);

    kelp_preview::Descriptor listener_;
    std::string folder_;
    ReceiverLimits limits_;
    std::list<Connection> connections_;
    std::list<ReceivedJob> received_;
    std::optional<Clock::time_point> acceptAgainAt_;
    std::string buffer_;
};

}  // namespace kelp_listen

#endif
