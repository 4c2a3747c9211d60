#ifndef KELP_PREVIEW_GRAPHIC_DECODER_H
#define KELP_PREVIEW_GRAPHIC_DECODER_H

#include <cstddef>
#include <cstdint>

#include "preview/bitmap.h"
#include "preview/byte_reader.h"
#include "preview/label.h"

namespace kelp_preview {

/// Reads the data of a graphic up to the command that follows it, or the end.
///
/// Digits come in hexadecimal, high nibble first. Letters before a digit repeat it: G to Y 1 to 19
/// times, g to z 20 to 400 times in twenties; they add up. ',' fills the rest of the row with 0,
/// '!' with 1; ':' repeats the row before, above the first row that is a white one. A row ends with
/// its last digit; a run may go on in the next one. Line ends mean nothing.
///
/// What else is found gives a warning. The result has the whole rows that there were, `rows` at
/// most: perhaps none.
Bitmap decodeGraphic(ByteReader& reader, std::size_t rowBytes, std::uint64_t rows,
                     Remarks& warnings);

}  // namespace kelp_preview

#endif
