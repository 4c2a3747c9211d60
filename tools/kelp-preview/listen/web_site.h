#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_WEB_SITE_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_WEB_SITE_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/kelp-preview/listen/job_files.h"
#include "tools/kelp-preview/listen/job_table.h"
#include "tools/kelp-preview/listen/listening_socket.h"

namespace kelp_listen {

struct Request {
    std::string method;
    std::string path;
    std::optional<std::string> host;     ///< the Host header
    std::optional<std::string> version;  ///< the If-None-Match header
};

struct Answer {
    unsigned status = 200;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    OpenFile file;  ///< the body, where it is open
};

/// What is answered to a request. Read only; a path is looked up among the jobs and never reaches
/// the file system.
class WebSite {
  public:
    /// @param table borrowed, it must outlive the site
    /// @param printer where it takes jobs, for the page
    /// @param socket where the site is served: on a loopback address only requests for a local
    ///        name are answered, as another site's name may have been pointed here
    WebSite(const JobTable& table, std::string printer, const ListeningSocket& socket)
        : table_(table),
          printer_(std::move(printer)),
          ownHost_(socket.host),
          localOnly_(socket.loopback) {}

    Answer answer(const Request& request) const;

  private:
    bool isForUs(const Request& request) const;
    Answer found(const Request& request) const;

    const JobTable& table_;
    std::string printer_;
    std::string ownHost_;
    bool localOnly_;
};

}  // namespace kelp_listen

#endif
