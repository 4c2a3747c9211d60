#include "preview/graphic_store.h"

#include <utility>

namespace kelp_preview {

std::string GraphicStore::fullName(const std::string& name) {
    std::string full = name.find(':') == std::string::npos ? "R:" + name : name;
    if (full.find('.') == std::string::npos) {
        full += ".GRF";
    }
    for (char& c : full) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return full;
}

namespace {

std::uint64_t dotsOf(const StoredGraphic& graphic) {
    return graphic.dots->width * graphic.dots->height;
}

}  // namespace

StoredGraphic* GraphicStore::find(const std::string& name) {
    const auto found = graphics_.find(fullName(name));
    return found == graphics_.end() ? nullptr : &found->second;
}

void GraphicStore::remove(const std::string& name) {
    const auto found = graphics_.find(fullName(name));
    if (found != graphics_.end()) {
        dots_ -= dotsOf(found->second);
        graphics_.erase(found);
    }
}

void GraphicStore::add(const std::string& name, StoredGraphic graphic) {
    remove(name);
    dots_ += dotsOf(graphic);
    graphics_[fullName(name)] = std::move(graphic);
}

}  // namespace kelp_preview
