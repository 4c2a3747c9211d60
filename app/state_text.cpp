#include "app/state_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>

namespace kelp_app {

namespace {

constexpr std::string_view kJob = "Job ";
constexpr std::string_view kPrinter = "<Printer ";
constexpr std::string_view kPrinterEnd = "</Printer>";
constexpr std::size_t kLongestValue = 255;
// RFC 8011, 5.3.7
constexpr std::string_view kPending = "3";
constexpr std::string_view kProcessing = "5";
constexpr int kCanceled = 7;  // the first of those that have ended
constexpr std::string_view kAborted = "8";

int numberOf(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// Takes ` name="value"` from the front of a text, `\` before `"` and itself; none where there is
/// no such.
std::optional<std::pair<std::string, std::string>> takeOption(std::string_view& text) {
    const std::size_t equals = text.find("=\"");
    if (!text.starts_with(' ') || equals == std::string_view::npos) {
        return std::nullopt;
    }
    std::pair<std::string, std::string> option(text.substr(1, equals - 1), "");
    for (std::size_t at = equals + 2; at < text.size(); ++at) {
        if (text[at] == '"') {
            text.remove_prefix(at + 1);
            return option;
        }
        at += text[at] == '\\' && at + 1 < text.size() ? 1 : 0;
        option.second += text[at];
    }
    return std::nullopt;
}

/// Takes the line of a job from the front of a text; none where it is not one.
std::optional<SavedJob> takeJob(std::string_view& text) {
    std::string_view rest = text.substr(kJob.size() - 1);
    SavedJob job;
    while (!rest.starts_with('\n')) {
        auto option = takeOption(rest);
        if (!option) {
            return std::nullopt;
        }
        job.push_back(std::move(*option));
    }
    text = rest.substr(1);
    return job;
}

std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

void makeHarmless(std::string& value) {
    std::replace_if(
        value.begin(), value.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    if (value.size() > kLongestValue) {
        std::size_t end = kLongestValue;
        while (end > 0 && (static_cast<unsigned char>(value[end]) & 0xC0U) == 0x80) {
            --end;  // not within a character
        }
        value.resize(end);
    }
}

std::string lineOf(const SavedJob& job) {
    std::string line(kJob.substr(0, kJob.size() - 1));
    for (const auto& [name, value] : job) {
        line += " " + name + "=\"";
        for (const char c : value) {
            line += c == '"' || c == '\\' ? "\\" : "";
            line += c;
        }
        line += '"';
    }
    return line;
}

SavedJob::const_iterator find(const SavedJob& job, std::string_view name) {
    return std::find_if(job.begin(), job.end(),
                        [&](const auto& option) { return option.first == name; });
}

/// Empty where it has none.
std::string_view valueOf(const SavedJob& job, std::string_view name) {
    const auto found = find(job, name);
    return found != job.end() ? std::string_view(found->second) : std::string_view();
}

void setState(SavedJob& job, std::string_view state) {
    if (const auto found = find(job, "state"); found != job.end()) {
        job[static_cast<std::size_t>(found - job.begin())].second = state;
    } else {
        job.emplace_back("state", state);
    }
}

bool hasEnded(const SavedJob& job) {
    return numberOf(valueOf(job, "state")) >= kCanceled;
}

}  // namespace

std::string withJobs(std::string_view state,
                     const std::function<void(const JobNumber&, SavedJob&)>& change) {
    std::string result;
    int printer = 0;
    while (!state.empty()) {
        std::optional<SavedJob> job = state.starts_with(kJob) ? takeJob(state) : std::nullopt;
        if (!job) {
            const std::string_view line = takeLine(state);
            if (line.starts_with(kPrinter)) {
                const std::size_t id = line.find(" id=\"");
                printer = id != std::string_view::npos ? numberOf(line.substr(id + 5)) : 0;
            }
            result.append(line) += '\n';
            continue;
        }
        for (auto& option : *job) {
            makeHarmless(option.second);
        }
        change({printer, numberOf(valueOf(*job, "id"))}, *job);
        result += lineOf(*job) + '\n';
    }
    return result;
}

std::string stateToSave(std::string_view state, JobsToSave& jobs) {
    return withJobs(state, [&](const JobNumber& number, SavedJob& job) {
        if (hasEnded(job)) {
            return;
        }
        jobs.waiting.insert(number);
        if (valueOf(job, "state") == kProcessing) {
            setState(job, kPending);
        } else if (find(job, "filename") == job.end()) {
            jobs.areDocumentsOnTheWay = true;
        }
    });
}

std::string stateToLoad(std::string_view state, const std::set<JobNumber>& begun) {
    return withJobs(state, [&](const JobNumber& number, SavedJob& job) {
        if (find(job, "format") == job.end()) {
            job.emplace_back("format", "application/octet-stream");
        }
        if (!hasEnded(job) && begun.contains(number)) {
            setState(job, kAborted);
        }
    });
}

bool isWholeState(std::string_view state, int printers) {
    bool hasIdentity = false;
    int begun = 0;
    int ended = 0;
    while (!state.empty()) {
        const std::string_view line = takeLine(state);
        hasIdentity = hasIdentity || line.starts_with("UUID ");
        begun += line.starts_with(kPrinter) ? 1 : 0;
        ended += line == kPrinterEnd ? 1 : 0;
    }
    return hasIdentity && begun == printers && ended == printers;
}

}  // namespace kelp_app
