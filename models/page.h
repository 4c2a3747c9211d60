#ifndef KELP_MODELS_PAGE_H
#define KELP_MODELS_PAGE_H

#include "fitter/target_page.h"
#include "models/model.h"

namespace kelp_models {

/// The page that every page of a job on this size is fitted to.
TargetPage pageOf(const Model& model, const PageSize& size);

/// The page of a size of the job's own. Throws FitError where the model does not take it.
TargetPage customPageOf(const Model& model, float widthPoints, float lengthPoints);

}  // namespace kelp_models

#endif
