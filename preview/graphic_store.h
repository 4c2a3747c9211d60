#ifndef KELP_PREVIEW_GRAPHIC_STORE_H
#define KELP_PREVIEW_GRAPHIC_STORE_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "preview/bitmap.h"

namespace kelp_preview {

/// A graphic that was downloaded.
struct StoredGraphic {
    std::shared_ptr<const Bitmap> dots;  ///< null for none
    std::uint64_t streamBytes = 0;       ///< of its data in the stream
};

/// The printer's memory of graphics, by name. Drive and extension may be left out: R: and .GRF.
class GraphicStore {
  public:
    /// With drive and extension, in capitals.
    static std::string fullName(const std::string& name);

    /// Null when there is none.
    StoredGraphic* find(const std::string& name);
    void remove(const std::string& name);
    /// Replaces one of that name.
    void add(const std::string& name, StoredGraphic graphic);
    /// Of all graphics together.
    std::uint64_t dots() const { return dots_; }

  private:
    std::map<std::string, StoredGraphic> graphics_;
    std::uint64_t dots_ = 0;
};

}  // namespace kelp_preview

#endif
