#ifndef KELP_TOOLS_KELP_PREVIEW_PRINTED_LABEL_H
#define KELP_TOOLS_KELP_PREVIEW_PRINTED_LABEL_H

#include <memory>

#include "preview/label.h"

/// Turns a label's dots where its settings tell the printer to.
inline void turnAsPrinted(kelp_preview::Label& label) {
    if (label.setup.isTurned()) {
        label.dots = std::make_shared<const kelp_preview::Bitmap>(turned(*label.dots));
    }
}

#endif
