#include "tools/kelp-preview/listen/web_page.h"

#include <algorithm>
#include <cstdio>
#include <limits>

#include "tools/kelp-preview/listen/html.h"

namespace kelp_listen {
namespace {

/// What the front page shows in full; the rest is a link away.
constexpr std::size_t kJobsInFull = 20;
constexpr std::size_t kLabelsInFull = 10;
constexpr const char* kSecondsToRenew = "2";

std::string link(const std::string& path, const std::string& text) {
    return "<a href=\"" + escaped(path) + "\">" + escaped(text) + "</a>";
}

std::string page(const std::string& title, const std::string& inHead, const std::string& body) {
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
           inHead + "<title>" + escaped(title) +
           "</title>\n"
           "<link rel=\"stylesheet\" href=\"" +
           kStylePath + "\">\n</head>\n<body>\n" + body + "</body>\n</html>\n";
}

std::string altText(const ShownJob& job, const ShownLabel& label, std::size_t number) {
    char share[16];
    std::snprintf(share, sizeof share, "%.1f", label.blackShare * 100);
    return "Label " + std::to_string(number) + " of job " + std::to_string(job.number) +
           " as it prints: " + std::to_string(label.width) + " by " + std::to_string(label.height) +
           " dots, " + share + " percent black";
}

std::string figure(const ShownJob& job, std::size_t number) {
    const ShownLabel& label = job.labels[number - 1];
    const std::string path = escaped(picturePath(job, number));
    return "<figure>\n<a href=\"" + path + "\"><img src=\"" + path + "\" width=\"" +
           std::to_string(label.width) + "\" height=\"" + std::to_string(label.height) +
           "\" alt=\"" + escaped(altText(job, label, number)) + "\"></a>\n<figcaption><pre>" +
           escaped(label.text) + "</pre></figcaption>\n</figure>\n";
}

std::string article(const ShownJob& job, std::size_t mostLabels) {
    std::string html =
        "<article>\n<h2>" + link(jobPath(job), "Job " + std::to_string(job.number)) + "</h2>\n<p>" +
        escaped(job.summary()) + ". Stored <time>" + escaped(job.time) + "</time>, " +
        std::to_string(job.bytes) + " bytes from " + escaped(job.sender) + ". " +
        link(streamPath(job), "Stream of job " + std::to_string(job.number)) + "</p>\n";
    if (!job.notes.empty()) {
        html += "<ul class=\"notes\">\n";
        for (const std::string& note : job.notes) {
            html += "<li>" + escaped(note) + "</li>\n";
        }
        html += "</ul>\n";
    }
    const std::size_t shown = std::min(mostLabels, job.labels.size());
    for (std::size_t number = 1; number <= shown; ++number) {
        html += figure(job, number);
    }
    if (shown < job.labels.size()) {
        html += "<p>" + link(jobPath(job), "All " + std::to_string(job.labels.size()) + " labels") +
                "</p>\n";
    }
    if (!job.rest.empty()) {
        html += "<h3>Behind the last label</h3>\n<pre>" + escaped(job.rest) + "</pre>\n";
    }
    return html + "</article>\n";
}

std::string olderJobs(const std::deque<ShownJob>& jobs) {
    std::string html = "<h2>Older jobs</h2>\n<ul>\n";
    for (std::size_t i = kJobsInFull; i < jobs.size(); ++i) {
        html += "<li>" + link(jobPath(jobs[i]), "Job " + std::to_string(jobs[i].number)) + ": " +
                escaped(jobs[i].summary()) + ", <time>" + escaped(jobs[i].time) + "</time></li>\n";
    }
    return html + "</ul>\n";
}

}  // namespace

std::string jobPath(const ShownJob& job) {
    return "/job/" + std::to_string(job.number);
}

std::string streamPath(const ShownJob& job) {
    return jobPath(job) + "/job.zpl";
}

std::string picturePath(const ShownJob& job, std::size_t label) {
    return jobPath(job) + "/label-" + std::to_string(label) + ".png";
}

std::string frontPage(const JobTable& table, const std::string& printer, bool renews) {
    const std::deque<ShownJob>& jobs = table.jobs();
    std::string body = "<header>\n<h1>Virtual label printer</h1>\n<p>It takes jobs at <strong>" +
                       escaped(printer) + "</strong>. " +
                       (renews ? "This page renews itself. " + link(kStillPath, "Stop renewing")
                               : link(kFrontPath, "Renew it by itself")) +
                       "</p>\n</header>\n<main>\n";
    if (jobs.empty()) {
        body += "<p>No job has come yet.</p>\n";
    }
    for (std::size_t i = 0; i < std::min(kJobsInFull, jobs.size()); ++i) {
        body += article(jobs[i], kLabelsInFull);
    }
    if (jobs.size() > kJobsInFull) {
        body += olderJobs(jobs);
    }
    const std::string title =
        jobs.empty() ? "Virtual label printer"
                     : "Job " + std::to_string(jobs[0].number) + " - Virtual label printer";
    return page(
        title,
        renews ? std::string("<meta http-equiv=\"refresh\" content=\"") + kSecondsToRenew + "\">\n"
               : std::string(),
        body + "</main>\n");
}

std::string jobPage(const ShownJob& job) {
    return page("Job " + std::to_string(job.number) + " - Virtual label printer", "",
                "<header>\n<h1>Virtual label printer</h1>\n<p>" + link(kFrontPath, "All jobs") +
                    "</p>\n</header>\n<main>\n" +
                    article(job, std::numeric_limits<std::size_t>::max()) + "</main>\n");
}

std::string styleSheet() {
    return R"css(:root { color-scheme: light dark; --ink: #1d1d1f; --paper: #f4f4f2; --sheet: #fff;
  --line: #c9c9c4; --link: #0b57a4; --note: #8a3c00; }
@media (prefers-color-scheme: dark) { :root { --ink: #e8e8e6; --paper: #1b1c1e; --sheet: #26282b;
  --line: #4a4d52; --link: #8ec2ff; --note: #ffb37a; } }
body { margin: 0 auto; max-width: 70rem; padding: 1rem; color: var(--ink);
  background: var(--paper); font: 1rem/1.5 system-ui, sans-serif; }
h1 { font-size: 1.4rem; margin: 0; }
h2 { font-size: 1.2rem; margin: 0; }
h3 { font-size: 1rem; }
a { color: var(--link); }
article { margin: 1rem 0; padding: 1rem; background: var(--sheet);
  border: 1px solid var(--line); border-radius: .5rem; }
figure { display: flex; flex-wrap: wrap; gap: 1.5rem; align-items: flex-start;
  margin: 1rem 0 0; padding-top: 1rem; border-top: 1px solid var(--line); }
figure > a { max-width: min(100%, 30rem); line-height: 0; }
figcaption { flex: 1 1 20rem; min-width: 0; }
img { max-width: 100%; height: auto; background: #fff; outline: 1px solid var(--line); }
pre { margin: 0; white-space: pre-wrap; overflow-wrap: anywhere; font: .875rem/1.5 ui-monospace, monospace; }
.notes { color: var(--note); font-weight: 600; }
)css";
}

}  // namespace kelp_listen
