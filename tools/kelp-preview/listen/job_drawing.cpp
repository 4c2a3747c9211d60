#include "tools/kelp-preview/listen/job_drawing.h"

#include <cerrno>
#include <exception>
#include <ios>
#include <memory>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include "preview/description.h"
#include "preview/png_writer.h"

namespace kelp_listen {

using kelp_preview::Bitmap;
using kelp_preview::Description;
using kelp_preview::Label;

JobDrawing::JobDrawing(UnfinishedJob& files, const std::string& remark, const DrawingLimits& limits)
    : files_(files), limits_(limits), dotsLeft_(limits.jobDots), textLeft_(limits.textBytes) {
    if (!remark.empty()) {
        note(remark);
    }
    job_.bytes = files.bytes();
}

void JobDrawing::note(const std::string& text) {
    job_.notes.push_back(text);
    ++job_.warnings;
}

bool JobDrawing::drawNext() {
    try {
        return drawLabel();
    } catch (const std::bad_alloc&) {
        note("out of memory behind label " + std::to_string(job_.labels.size()));
    } catch (const std::system_error& error) {
        // without the name of a file that has another one soon
        note("label " + std::to_string(job_.labels.size() + 1) + ": " + error.code().message());
    } catch (const std::exception& error) {
        note(error.what());
    }
    return false;
}

bool JobDrawing::drawLabel() {
    if (!decoder_) {
        if (stream_.open(files_.streamPath(), std::ios::in | std::ios::binary) == nullptr) {
            throw std::system_error(errno, std::generic_category(), kStreamName);
        }
        decoder_ = std::make_unique<kelp_preview::StreamDecoder>(
            stream_, kelp_preview::DecoderLimits{limits_.maxDots});
    }
    std::optional<Label> label = decoder_->next();
    if (!label) {
        job_.rest = withinBudget(asText(decoder_->rest()));
        job_.warnings += decoder_->rest().warnings.count();
        if (job_.labels.empty()) {
            note("no label in it");
        }
        return false;
    }
    if (job_.labels.size() == limits_.labels) {
        note("over the limit of " + std::to_string(limits_.labels) +
             " labels: the rest is not drawn");
        return false;
    }
    const std::uint64_t dots = label->dots->width * label->dots->height;
    if (dots > dotsLeft_) {
        note("labels of more than " + std::to_string(limits_.jobDots) +
             " dots together: the rest is not drawn");
        return false;
    }
    dotsLeft_ -= dots;
    add(std::move(*label));
    return true;
}

void JobDrawing::add(Label label) {
    if (label.setup.isTurned()) {
        label.dots = std::make_shared<const Bitmap>(turned(*label.dots));
    }
    const std::size_t number = job_.labels.size() + 1;
    Description description = describe(label);
    description.picture = files_.addPicture(number, pngOf(*label.dots));
    job_.warnings += label.findings.warnings.count();
    job_.labels.push_back({description.width, description.height, description.blackShare(),
                           withinBudget(asText(description, number)), description.picture});
}

std::string JobDrawing::withinBudget(std::string text) {
    if (text.size() > textLeft_) {
        return "The job's descriptions are too long to be shown any further.\n";
    }
    textLeft_ -= text.size();
    return text;
}

}  // namespace kelp_listen
