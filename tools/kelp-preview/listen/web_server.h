#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_WEB_SERVER_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_WEB_SERVER_H

#include <memory>

#include "preview/descriptor.h"
#include "tools/kelp-preview/listen/poll_set.h"
#include "tools/kelp-preview/listen/web_site.h"

struct MHD_Daemon;

namespace kelp_listen {

/// Serves a site over HTTP, in turns of the caller's loop: it has no thread of its own.
/// Connections, their memory and their idle time are limited.
class WebServer {
  public:
    /// @param listener non-blocking
    /// @param site borrowed, it must outlive the server
    /// Throws std::runtime_error.
    WebServer(kelp_preview::Descriptor listener, const WebSite& site);
    ~WebServer();
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;

    void addTo(PollSet& polls) const;
    /// Does what can be done without waiting.
    void serve();

  private:
    MHD_Daemon* daemon_;
    int events_;
};

}  // namespace kelp_listen

#endif
