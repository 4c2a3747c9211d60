#ifndef KELP_PRINTER_ZPL_ENCODING_H
#define KELP_PRINTER_ZPL_ENCODING_H

#include <cstddef>
#include <string>

// The run-length compression of ZPL graphics: hexadecimal digits, high nibble first, with repeat
// letters before a digit.

/// Appends `count` times the digit `ch`: G to Y repeat 1 to 19 times, g to y 20 to 380 times in
/// twenties, z 400 times; letters add up. A single digit stands alone.
void zplAppendRun(std::string& out, char ch, unsigned int count);

/// Appends the digits of one row as runs. A final run of zeros becomes ',' ("zeros to the end of
/// the row"), behind a literal '0' when it is odd; a single final zero is just '0'.
void zplAppendRow(std::string& out, const unsigned char* row, std::size_t rowBytes);
/// Characters that zplAppendRow needs room for on the way: it allocates nothing where `out` has
/// them.
std::size_t zplRowRoom(std::size_t rowBytes);

/// Whether every dot of the row is black.
bool zplIsSolidRow(const unsigned char* row, std::size_t rowBytes);

#endif
