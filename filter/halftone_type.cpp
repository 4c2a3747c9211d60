#include "filter/halftone_type.h"

#include <cstring>
#include <iterator>

namespace {

constexpr const char* sHalftoneTypeStrTable[] = {
    "None",   "FloydSteinberg", "Ordered", "Burkes",    "Stucki", "JarvisJudiceNinke",
    "Sierra", "StevensonArce",  "Tattoo",  "Tattoo_X8",
};
constexpr int kHalftoneTypes = static_cast<int>(std::size(sHalftoneTypeStrTable));

}  // namespace

const char* kelpHalftoneTypeToStr(int type) {
    return sHalftoneTypeStrTable[type >= 0 && type < kHalftoneTypes ? type : DitherNone];
}

DitherType kelpHalftoneTypeFromStr(const char* name) {
    for (int type = 0; type < kHalftoneTypes; ++type) {
        if (std::strcmp(name, sHalftoneTypeStrTable[type]) == 0) {
            return static_cast<DitherType>(type);
        }
    }
    return DitherNone;
}
