#include "tools/kelp-preview/diff/diff_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "preview/comparison.h"
#include "preview/png_writer.h"
#include "preview/stream_decoder.h"
#include "preview/whole_file.h"
#include "tools/kelp-preview/input.h"
#include "tools/kelp-preview/one_line.h"
#include "tools/kelp-preview/options.h"
#include "tools/kelp-preview/picture_name.h"
#include "tools/kelp-preview/printed_label.h"
#include "tools/kelp-preview/progress.h"
#include "tools/kelp-preview/status.h"

namespace {

using namespace kelp_preview;

struct DiffOptions {
    std::string before;
    std::string after;
    std::string picture;  ///< empty for none
    bool dotsOnly = false;
    std::uint64_t maxDots = DecoderLimits{}.maxDots;
};

/// One of the two streams.
class Side {
  public:
    Side(const std::string& path, const DiffOptions& options, Progress& progress)
        : path_(path),
          progress_(progress),
          input_(path, progress),
          decoder_(input_, DecoderLimits{options.maxDots}) {}

    std::optional<Label> next() {
        if (ended_) {
            return std::nullopt;  // what stands behind the last label has been told
        }
        try {
            std::optional<Label> label = decoder_.next();
            tell(label ? label->findings : decoder_.rest());
            ended_ = !label;
            count_ += label ? 1 : 0;
            if (label) {
                turnAsPrinted(*label);
            }
            return label;
        } catch (const StreamRefused& refused) {
            throw std::runtime_error(path_ + ": " + refused.what());
        }
    }
    std::uint64_t count() const { return count_; }
    const std::string& path() const { return path_; }

  private:
    void tell(const Findings& findings) const {
        progress_.clear();
        const std::string name = oneLine(path_);
        for (const Remark& remark : findings.warnings.kept()) {
            std::fprintf(stderr, "kelp-preview: %s: byte %llu: %s\n", name.c_str(),
                         static_cast<unsigned long long>(remark.offset), remark.text.c_str());
        }
    }

    std::string path_;
    Progress& progress_;
    Input input_;
    StreamDecoder decoder_;
    std::uint64_t count_ = 0;
    bool ended_ = false;
};

struct Pair {
    std::optional<Label> before;
    std::optional<Label> after;

    bool any() const { return before || after; }
};

std::string sizeOf(const Bitmap& dots) {
    return std::to_string(dots.width) + " x " + std::to_string(dots.height) + " dots";
}

/// "17 dots differ: 5 added, 12 missing; the first at column 3, row 8 is missing"
std::string asText(const DotDifference& difference, const Bitmap& before) {
    const Place& first = *difference.first;
    const bool missing = first.row < before.height && first.column < before.width &&
                         before.dot(first.column, first.row);
    return std::to_string(difference.count()) +
           (difference.count() == 1 ? " dot differs: " : " dots differ: ") +
           std::to_string(difference.added) + " added, " + std::to_string(difference.missing) +
           " missing; the first at column " + std::to_string(first.column) + ", row " +
           std::to_string(first.row) + (missing ? " is missing" : " is added");
}

class LabelDiff {
  public:
    explicit LabelDiff(const DiffOptions& options) : options_(options) {}

    /// @param onlyOne whether there are no other labels
    void compare(const Pair& pair, bool onlyOne) {
        ++count_;
        const bool same = pair.before && pair.after ? compareBoth(pair) : tellMissing(pair);
        if (!same) {
            ++different_;
            writePicture(pair, onlyOne);
        }
    }

    int finish() const {
        if (different_ == 0) {
            std::printf("%llu labels, all equal\n", count_);
            return kStatusDone;
        }
        std::printf("%llu of %llu labels differ\n", different_, count_);
        return kStatusDifferent;
    }

  private:
    bool compareBoth(const Pair& pair) const {
        const Bitmap& before = *pair.before->dots;
        const Bitmap& after = *pair.after->dots;
        std::vector<std::string> lines;
        if (before.width != after.width || before.height != after.height) {
            lines.push_back("size: " + sizeOf(before) + " and " + sizeOf(after));
        }
        if (const DotDifference difference = compareDots(before, after); difference.first) {
            lines.push_back(asText(difference, before));
        }
        if (!options_.dotsOnly) {
            const auto settings = compareSettings(*pair.before, *pair.after);
            lines.insert(lines.end(), settings.begin(), settings.end());
        }
        std::printf("Label %llu: %s%s\n", count_, lines.empty() ? "equal, " : "different",
                    lines.empty() ? sizeOf(before).c_str() : "");
        for (const std::string& line : lines) {
            std::printf("  %s\n", line.c_str());
        }
        return lines.empty();
    }

    bool tellMissing(const Pair& pair) const {
        std::printf("Label %llu: only in %s\n", count_,
                    oneLine(pair.before ? options_.before : options_.after).c_str());
        return false;
    }

    void writePicture(const Pair& pair, bool onlyOne) const {
        if (options_.picture.empty()) {
            return;
        }
        static const Bitmap none;
        const Bitmap& before = pair.before ? *pair.before->dots : none;
        const Bitmap& after = pair.after ? *pair.after->dots : none;
        const std::uint64_t width = std::max(before.width, after.width);
        const std::uint64_t height = std::max(before.height, after.height);
        if (width > options_.maxDots / height) {
            throw std::runtime_error("the picture of label " + std::to_string(count_) +
                                     " would be over the limit of " +
                                     std::to_string(options_.maxDots) + " dots");
        }
        writeWholeFile(pictureName(options_.picture, count_, onlyOne),
                       differencePng(before, after));
    }

    const DiffOptions& options_;
    unsigned long long count_ = 0;
    unsigned long long different_ = 0;
};

int diff(const DiffOptions& options) {
    if (options.before == "-" && options.after == "-") {
        throw std::runtime_error("only one of the two streams can be standard input");
    }
    Progress progress;
    Side before(options.before, options, progress);
    Side after(options.after, options, progress);
    const auto nextPair = [&] { return Pair{before.next(), after.next()}; };
    LabelDiff labels(options);
    bool isFirst = true;
    for (Pair pair = nextPair(); pair.any(); isFirst = false) {
        Pair next = nextPair();
        progress.clear();
        labels.compare(pair, isFirst && !next.any());
        pair = std::move(next);
    }
    progress.clear();
    for (const Side* side : {&before, &after}) {
        if (side->count() == 0) {
            throw std::runtime_error("no label in " + side->path());
        }
    }
    return labels.finish();
}

}  // namespace

void addDiff(CLI::App& app, int& status) {
    const auto options = std::make_shared<DiffOptions>();
    CLI::App* command = app.add_subcommand(
        "diff", "Compare the labels of two printer streams: 0 equal, 1 different, 2 trouble");
    command->add_option("BEFORE", options->before, "A stream; standard input for -")->required();
    command->add_option("AFTER", options->after, "The stream to compare with it")->required();
    addPictureOption(*command, "-o,--output", options->picture,
                     "Write a picture of each label that differs: added dots blue, missing ones "
                     "red, common ones grey");
    command->add_flag("--dots-only", options->dotsOnly, "Let the settings differ");
    addMaxDotsOption(*command, options->maxDots);
    command->callback([options, &status] { status = diff(*options); });
}
