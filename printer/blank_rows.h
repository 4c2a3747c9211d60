#ifndef KELP_PRINTER_BLANK_ROWS_H
#define KELP_PRINTER_BLANK_ROWS_H

// Measuring blank rows of a page, one byte per pixel. A row is blank when its first rowBytes - skip
// bytes are 0 (rowBytes of them when skip exceeds rowBytes). Rows stand `stride` bytes apart; every
// byte examined must lie in the page.

/// Leading blank rows, seen from one row too far down: row 0 is never examined, the result is r
/// where row r + 1 is the first that is not blank, and `height` where none is. The row past the end
/// counts as blank.
unsigned long kelpImageCountBlankLinesFromFront(const unsigned char* data, unsigned long rowBytes,
                                                unsigned long height, unsigned long skip,
                                                unsigned long stride);

/// The end of the content: the number of rows up to and including the last that is not blank, 0 for
/// a blank page. (Not the number of blank rows, though the log calls it that.)
unsigned long kelpImageCountBlankLinesFromBack(const unsigned char* data, unsigned long rowBytes,
                                               unsigned long height, unsigned long skip,
                                               unsigned long stride);

#endif
