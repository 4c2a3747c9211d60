#ifndef KELP_APP_MEDIA_H
#define KELP_APP_MEDIA_H

#include <string>
#include <vector>

#include "fitter/target_page.h"
#include "models/model.h"

// The sizes of the models in the terms of IPP: a self-describing name, and hundredths of a
// millimetre.

namespace kelp_app {

struct Media {
    std::string name;  ///< "na_index-4x6_4x6in"
    int width;         ///< hundredths of a millimetre
    int length;
};

/// The media that a model's size is made for: the size its name tells, of which the page is the
/// whole points within.
Media mediaOf(const kelp_models::PageSize& size);

/// What a printer of the model takes, in the order of its sizes; at the end the smallest and the
/// largest custom size.
std::vector<Media> supportedMedia(const kelp_models::Model& model);

/// The model's own size that such media are, the nearest within a point; null for none.
const kelp_models::PageSize* sizeOfMedia(const kelp_models::Model& model, int width, int length);

/// The page on media of any size. Throws FitError for media that the printer does not take.
TargetPage pageOfMedia(const kelp_models::Model& model, int width, int length);

}  // namespace kelp_app

#endif
