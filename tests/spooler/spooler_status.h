#pragma once

#include <cups/ipp.h>

#include <filesystem>
#include <string>

namespace kelp_test {

// What the spooler tells about a job and a queue.
struct JobStatus {
    ipp_jstate_t state = IPP_JSTATE_PENDING;
    std::string reasons;
    std::string printer_message;  // the last message of a filter or backend

    // Nothing more happens to the job by itself.
    bool is_at_rest() const { return state >= IPP_JSTATE_STOPPED; }
};
struct QueueStatus {
    ipp_pstate_t state = IPP_PSTATE_IDLE;
    std::string reasons;
    std::string message;
    bool is_accepting = false;
};

// Throws std::runtime_error when the spooler does not answer or knows no such job or queue.
JobStatus ask_job(const std::filesystem::path& socket, int job);
QueueStatus ask_queue(const std::filesystem::path& socket, const std::string& queue);

// Whether a spooler listens there.
bool answers(const std::filesystem::path& socket);

}  // namespace kelp_test
