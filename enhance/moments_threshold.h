#ifndef KELP_ENHANCE_MOMENTS_THRESHOLD_H
#define KELP_ENHANCE_MOMENTS_THRESHOLD_H

#include "enhance/tq_image.h"

/// Moment-preserving threshold (Tsai, 1985) of the first width * height bytes, at least one, of a
/// one-channel image.
/// @return a grey level 0 ... 255 at which the cumulative histogram passes the share of dark
///   pixels; 128 where the equations have no finite real solution, as on a page of one tone; -1
///   where the cumulative histogram never passes it.
int thresh_global_moments(const TQImage& img);

#endif
