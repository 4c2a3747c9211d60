#ifndef KELP_ENHANCE_DIFFUSION_WEIGHTS_H
#define KELP_ENHANCE_DIFFUSION_WEIGHTS_H

/// The numbers of the stencil diffusion (enhance/error_diffusion.h), for both of its forms.
namespace diffusion {

// Weights of a pixel's error, by where it goes.
constexpr float kRight = 0.505786F;
constexpr float kRight2 = -0.052926F;
constexpr float kBelowLeft2 = 0.226194F;
constexpr float kBelowLeft = 0.128835F;
constexpr float kBelow = 0.243191F;
constexpr float kBelowRight = -0.111078F;

/// What white counts as, by how many of the pixels on the left and above are black.
constexpr float kBlackNeighbour = 0.1427F;
constexpr float kWhite[3] = {255.0F * (1.0F - 0.0F), 255.0F * (1.0F - kBlackNeighbour),
                             255.0F * (1.0F - (kBlackNeighbour + kBlackNeighbour))};

}  // namespace diffusion

#endif
