#include "tools/kelp-preview/listen/web_site.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "tools/kelp-preview/listen/unfinished_job.h"
#include "tools/kelp-preview/listen/web_page.h"

namespace kelp_listen {
namespace {

Answer text(unsigned status, const std::string& body) {
    return {status, {{"Content-Type", "text/plain; charset=utf-8"}}, body, {}};
}

Answer content(const char* type, std::string body) {
    return {200, {{"Content-Type", type}}, std::move(body), {}};
}

Answer fileOf(const ShownJob& job, const std::string& name, const char* type,
              const Request& request) {
    Answer answer{200, {}, {}, job.files.open(name)};
    if (!answer.file.descriptor.isOpen()) {
        return text(410, "It is not there any more.\n");
    }
    const std::string tag = "\"" + answer.file.version + "\"";
    if (request.version == tag) {
        answer.status = 304;
        answer.file.descriptor.reset();
    } else {
        answer.headers.emplace_back("Content-Type", type);
    }
    answer.headers.emplace_back("ETag", tag);
    return answer;
}

/// The name of "name:port" or "[name]:port".
std::string withoutPort(const std::string& host) {
    if (host.starts_with('[')) {
        const std::size_t end = host.find(']');
        return end == std::string::npos ? "" : host.substr(1, end - 1);
    }
    return host.substr(0, host.find(':'));
}

/// The number that the text begins with, taken off it; 0 where there is none.
std::uint64_t takeNumber(std::string_view& text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return error == std::errc() ? number : 0;
}

/// The label whose picture has this path, or null.
const ShownLabel* labelAt(const ShownJob& job, std::string_view path) {
    const std::string begin = jobPath(job) + "/label-";
    if (!path.starts_with(begin)) {
        return nullptr;
    }
    std::string_view rest = path.substr(begin.size());
    const std::uint64_t number = takeNumber(rest);
    if (number == 0 || number > job.labels.size() || path != picturePath(job, number)) {
        return nullptr;
    }
    return &job.labels[number - 1];
}

}  // namespace

bool WebSite::isForUs(const Request& request) const {
    if (!localOnly_) {
        return true;
    }
    const std::string host = withoutPort(request.host.value_or(""));
    const std::array<std::string, 4> ours{"localhost", "127.0.0.1", "::1", ownHost_};
    return std::any_of(ours.begin(), ours.end(), [&](const std::string& name) {
        return strcasecmp(host.c_str(), name.c_str()) == 0;
    });
}

Answer WebSite::found(const Request& request) const {
    const std::string& path = request.path;
    if (path == kFrontPath || path == kStillPath) {
        return content("text/html; charset=utf-8", frontPage(table_, printer_, path == kFrontPath));
    }
    if (path == kStylePath) {
        return content("text/css; charset=utf-8", styleSheet());
    }
    std::string_view rest = path;
    if (rest.starts_with("/job/")) {
        rest.remove_prefix(5);
        if (const ShownJob* job = table_.find(takeNumber(rest)); job != nullptr) {
            if (path == jobPath(*job)) {
                return content("text/html; charset=utf-8", jobPage(*job));
            }
            if (path == streamPath(*job)) {
                Answer stream = fileOf(*job, kStreamName, "application/octet-stream", request);
                stream.headers.emplace_back(
                    "Content-Disposition",
                    "attachment; filename=\"job-" + std::to_string(job->number) + ".zpl\"");
                return stream;
            }
            if (const ShownLabel* label = labelAt(*job, path); label != nullptr) {
                return fileOf(*job, label->picture, "image/png", request);
            }
        }
    }
    return text(404, "There is nothing here.\n");
}

Answer WebSite::answer(const Request& request) const {
    Answer answer;
    if (!isForUs(request)) {
        answer = text(421,
                      "This is the page of a virtual label printer on this machine, and not "
                      "of the name that was asked for.\n");
    } else if (request.method != "GET" && request.method != "HEAD") {
        answer = text(405, "This page can only be read.\n");
        answer.headers.emplace_back("Allow", "GET, HEAD");
    } else {
        answer = found(request);
    }
    const std::pair<std::string, std::string> always[] = {
        {"Content-Security-Policy",
         "default-src 'none'; img-src 'self'; style-src 'self'; base-uri 'none'; "
         "form-action 'none'; frame-ancestors 'none'"},
        {"X-Content-Type-Options", "nosniff"},
        {"X-Frame-Options", "DENY"},
        {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
        {"Cross-Origin-Opener-Policy", "same-origin"},
        {"Cache-Control", "no-cache"}};
    answer.headers.insert(answer.headers.end(), std::begin(always), std::end(always));
    return answer;
}

}  // namespace kelp_listen
