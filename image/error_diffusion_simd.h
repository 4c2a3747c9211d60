#ifndef KELP_IMAGE_ERROR_DIFFUSION_SIMD_H
#define KELP_IMAGE_ERROR_DIFFUSION_SIMD_H

#include "image/error_diffusion.h"

namespace diffusion {

/// The vector form of diffuseErrors(), for machines on which simd::isPlain() is false.
void diffuseInVectors(ErrorKernel kernel, const GreyPage& page, const MonoPage& dots);

}  // namespace diffusion

#endif
