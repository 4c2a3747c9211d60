#include "tools/kelp-preview/listen/virtual_printer.h"

#include <cstdio>
#include <ctime>
#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "tools/kelp-preview/listen/job_drawing.h"
#include "tools/kelp-preview/listen/job_folder.h"
#include "tools/kelp-preview/listen/job_receiver.h"
#include "tools/kelp-preview/listen/job_table.h"
#include "tools/kelp-preview/listen/listening_socket.h"
#include "tools/kelp-preview/listen/stop_signals.h"
#include "tools/kelp-preview/listen/web_server.h"
#include "tools/kelp-preview/listen/web_site.h"

namespace kelp_listen {
namespace {

std::string timeNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return text;
}

class VirtualPrinter {
  public:
    explicit VirtualPrinter(const ListenOptions& options)
        : options_(options),
          folder_(options.folder),
          port_(listenOn(options.address, options.port)),
          webPort_(listenOn(options.webAddress, options.webPort)),
          table_(options.keep),
          site_(table_, port_.name, webPort_),
          server_(std::move(webPort_.descriptor), site_),
          receiver_(std::move(port_.descriptor), folder_.path(), options.receiver) {
        std::fprintf(stderr, "Listening on %s\nWeb page: http://%s/\nJobs are stored in %s\n",
                     port_.name.c_str(), webPort_.name.c_str(), folder_.path().c_str());
    }

    void run() {
        while (!signals_.came() && std::ferror(stdout) == 0) {
            PollSet polls;
            polls.add(signals_.descriptor());
            receiver_.addTo(polls);
            server_.addTo(polls);
            if (receiver_.nextJob() != nullptr) {
                polls.until(Clock::now());
            }
            polls.wait();
            receiver_.serve(polls);
            server_.serve();
            drawNext();
        }
        receiver_.stop();
        // What has come whole is not lost, unless another signal says that it may be.
        while (receiver_.nextJob() != nullptr && !signals_.came()) {
            drawNext();
        }
        for (; receiver_.nextJob() != nullptr; receiver_.finishJob()) {
            std::fprintf(stderr, "kelp-preview: job from %s dropped: it was not drawn yet\n",
                         receiver_.nextJob()->sender.c_str());
        }
    }

  private:
    /// One label of the job whose turn it is; the job is stored behind its last label.
    void drawNext() {
        ReceivedJob* job = receiver_.nextJob();
        if (job == nullptr) {
            return;
        }
        if (!drawing_) {
            drawing_.emplace(*job->files, job->remark, options_.drawing);
        }
        if (drawing_->drawNext()) {
            return;
        }
        try {
            store(*job, drawing_->take());
        } catch (const std::exception& error) {
            std::fprintf(stderr, "kelp-preview: job from %s not stored: %s\n", job->sender.c_str(),
                         error.what());
        }
        drawing_.reset();
        receiver_.finishJob();
    }

    void store(ReceivedJob& received, ShownJob job) {
        job.number = folder_.keep(*received.files);
        job.files = received.files->files();
        job.sender = received.sender;
        job.time = timeNow();
        std::printf("Job %llu: %s, %llu bytes from %s in %s\n",
                    static_cast<unsigned long long>(job.number), job.summary().c_str(),
                    static_cast<unsigned long long>(job.bytes), job.sender.c_str(),
                    job.files.path().c_str());
        std::fflush(stdout);
        table_.add(std::move(job));
    }

    const ListenOptions& options_;
    StopSignals signals_;
    JobFolder folder_;
    ListeningSocket port_;
    ListeningSocket webPort_;
    JobTable table_;
    WebSite site_;
    WebServer server_;
    JobReceiver receiver_;
    std::optional<JobDrawing> drawing_;
};

}  // namespace

void runVirtualPrinter(const ListenOptions& options) {
    VirtualPrinter(options).run();
}

}  // namespace kelp_listen
