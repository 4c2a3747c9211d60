#pragma once

#include <string>
#include <vector>

namespace reference {

// Pixels of a row that are packed when skip pixels are dropped at its right end.
int keptPixels(int width, unsigned long skip);

// One bit per dot, most significant bit leftmost, rows of data width bytes apart.
std::vector<unsigned char> grayToMono(int width, int height, unsigned long skip,
                                      const std::vector<unsigned char>& data);

// One run of a hex digit.
std::string encodeRun(char digit, unsigned count);

// One packed row. lastSet is 0 before the first row of a page.
std::string encodeRow(const std::vector<unsigned char>& row, int& lastSet);

// A whole label from one byte per pixel; lastSet is reset by the caller.
std::string encodeLabel(int width, int height, unsigned long skip, int copies,
                        const std::vector<unsigned char>& data, int& lastSet);

}  // namespace reference
