#include "tools/kelp-preview/show/show_labels.h"

#include <CLI/CLI.hpp>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <utility>

#include "preview/description.h"
#include "preview/description_json.h"
#include "preview/png_writer.h"
#include "preview/whole_file.h"
#include "tools/kelp-preview/options.h"
#include "tools/kelp-preview/picture_name.h"
#include "tools/kelp-preview/printed_label.h"
#include "tools/kelp-preview/status.h"

namespace {

using namespace kelp_preview;

class LabelShow {
  public:
    LabelShow(std::string streamName, const LabelOutput& options, Progress& progress)
        : streamName_(std::move(streamName)), options_(options), progress_(progress) {}

    /// A label waits for the next one: the only label's picture has another name.
    void take(Label label) {
        if (waiting_) {
            showWaiting(false);
        }
        waiting_ = std::move(label);
    }

    int finish(const Findings& rest) {
        if (!waiting_) {
            throw std::runtime_error("no label in " + streamName_ + firstOf(rest.warnings));
        }
        showWaiting(count_ == 0);
        warned_ = warned_ || !rest.warnings.empty();
        if (options_.json) {
            nlohmann::ordered_json json = {{"labels", std::move(labels_)}};
            json.update(asJson(rest));
            print(json.dump(2) + "\n");
        } else if (const std::string text = asText(rest); !text.empty()) {
            print("\nBehind the last label\n" + text);
        }
        return warned_ ? kStatusWarned : kStatusDone;
    }

  private:
    static std::string firstOf(const Remarks& warnings) {
        if (warnings.empty()) {
            return {};
        }
        const Remark& first = warnings.kept().front();
        return " (byte " + std::to_string(first.offset) + ": " + first.text + ")";
    }

    void print(const std::string& text) {
        progress_.clear();
        std::fputs(text.c_str(), stdout);
    }

    void showWaiting(bool onlyOne) {
        Label label = *std::exchange(waiting_, std::nullopt);
        ++count_;
        if (!options_.asSent) {
            turnAsPrinted(label);
        }
        Description description = describe(label);
        if (!options_.picture.empty()) {
            description.picture = pictureName(options_.picture, count_, onlyOne);
            writeWholeFile(description.picture, pngOf(*label.dots));
        }
        warned_ = warned_ || !label.findings.warnings.empty();
        if (options_.json) {
            labels_.push_back(asJson(description));
        } else {
            print((count_ > 1 ? "\n" : "") + asText(description, count_));
        }
    }

    std::string streamName_;
    const LabelOutput& options_;
    Progress& progress_;
    std::optional<Label> waiting_;
    std::size_t count_ = 0;
    bool warned_ = false;
    nlohmann::ordered_json labels_ = nlohmann::ordered_json::array();
};

}  // namespace

int showLabels(std::streambuf& stream, const std::string& streamName, const LabelOutput& output,
               Progress& progress) {
    LabelShow labels(streamName, output, progress);
    StreamDecoder decoder(stream, DecoderLimits{output.maxDots});
    while (std::optional<Label> label = decoder.next()) {
        labels.take(std::move(*label));
    }
    return labels.finish(decoder.rest());
}

void addLabelOutputOptions(CLI::App& command, const std::string& pictureOption,
                           LabelOutput& output) {
    addPictureOption(
        command, pictureOption, output.picture,
        "Write each label as a PNG: this one, or OUT-1.png, OUT-2.png, ... of several");
    command.add_flag("--json", output.json, "Describe in JSON");
    command.add_flag("--as-sent", output.asSent, "Do not turn labels as the printer would");
    addMaxDotsOption(command, output.maxDots);
}
