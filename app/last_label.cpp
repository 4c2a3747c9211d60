#include "app/last_label.h"

#include <map>
#include <mutex>
#include <sstream>
#include <utility>

#include "app/label_encoder.h"
#include "preview/png_writer.h"
#include "preview/stream_decoder.h"

namespace kelp_app {

namespace {

/// Jobs may outlive everything else.
struct Labels {
    std::mutex mutex;
    std::map<int, std::shared_ptr<const Label>> ofPrinters;
};
Labels& labels() {
    static auto& forever = *new Labels;
    return forever;
}

}  // namespace

void keepLastLabel(int printer, Label label) {
    auto kept = std::make_shared<const Label>(std::move(label));
    const std::lock_guard lock(labels().mutex);
    labels().ofPrinters[printer] = std::move(kept);
}

std::shared_ptr<const Label> lastLabel(int printer) {
    const std::lock_guard lock(labels().mutex);
    const auto found = labels().ofPrinters.find(printer);
    return found != labels().ofPrinters.end() ? found->second : nullptr;
}

std::string pictureOf(const std::string& commands) {
    std::stringbuf stream(commands);
    kelp_preview::StreamDecoder decoder(stream, {});
    const auto label = decoder.next();
    return label ? kelp_preview::pngOf(*label->dots) : std::string();
}

std::string pictureInHalftone(const Label& label, DitherType halftone) {
    Settings settings = label.settings;
    settings.halftoneType = halftone;
    std::vector<unsigned char> pixels = label.pixels;
    return pictureOf(encodeLabel(settings, label.header, pixels.data(), 1));
}

}  // namespace kelp_app
