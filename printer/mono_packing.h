#ifndef KELP_PRINTER_MONO_PACKING_H
#define KELP_PRINTER_MONO_PACKING_H

#include <cstddef>

/// Packs one row of dots to bits, most significant first, 1 for any byte but 0.
/// @param packed (count + 7) / 8 bytes, unused low bits 0; it may start at or before `dots` in the
///   same buffer
void packMonoRow(const unsigned char* dots, std::size_t count, unsigned char* packed);

#endif
