#include "printer/zpl_encoding.h"

#include <algorithm>

#include "printer/zpl_runs.h"

void zplAppendRun(std::string& out, char ch, unsigned int count) {
    const std::size_t before = out.size();
    out.resize(before + count / 400 + 3);  // a letter for each 400, two for the rest, the digit
    out.resize(static_cast<std::size_t>(zplPutRun(out.data() + before, ch, count) - out.data()));
}

bool zplIsSolidRow(const unsigned char* row, std::size_t rowBytes) {
    return std::all_of(row, row + rowBytes, [](unsigned char byte) { return byte == 0xFF; });
}
