#include "tools/kelp-preview/sheet/contact_sheet.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using kelp_preview::Bitmap;

constexpr std::uint64_t kMargin = 24;
constexpr std::uint64_t kFrame = 1;
constexpr double kShapeOfScreens = 1.5;

/// The number of columns with the fewest empty places, of these the one nearest to a screen.
std::uint64_t bestColumns(std::uint64_t count, std::uint64_t cellWidth, std::uint64_t cellHeight) {
    std::uint64_t best = 1;
    double leastFault = std::numeric_limits<double>::max();
    for (std::uint64_t columns = 1; columns <= count; ++columns) {
        const std::uint64_t rows = (count + columns - 1) / columns;
        const double shape =
            static_cast<double>(columns * cellWidth) / static_cast<double>(rows * cellHeight);
        const double fault = std::abs(std::log(shape / kShapeOfScreens)) +
                             static_cast<double>(rows * columns - count);
        if (fault < leastFault) {
            leastFault = fault;
            best = columns;
        }
    }
    return best;
}

void frame(Bitmap& sheet, std::uint64_t left, std::uint64_t top, const Bitmap& print) {
    const std::uint64_t right = left + print.width + kFrame;
    const std::uint64_t bottom = top + print.height + kFrame;
    for (std::uint64_t x = left; x <= right; ++x) {
        sheet.setDot(x, top);
        sheet.setDot(x, bottom);
    }
    for (std::uint64_t y = top; y <= bottom; ++y) {
        sheet.setDot(left, y);
        sheet.setDot(right, y);
    }
}

}  // namespace

SheetLayout layOutSheet(const std::vector<SheetCell>& cells) {
    SheetLayout layout;
    std::uint64_t captionHeight = 0;
    std::uint64_t contentWidth = cells[0].print.width + 2 * kFrame;
    for (const SheetCell& cell : cells) {
        captionHeight = std::max(captionHeight, cell.caption.height);
        contentWidth = std::max(contentWidth, cell.caption.width);
    }
    layout.cellWidth = contentWidth + kMargin;
    layout.cellHeight = captionHeight + cells[0].print.height + 2 * kFrame + kMargin;
    layout.columns = bestColumns(cells.size(), layout.cellWidth, layout.cellHeight);
    const std::uint64_t rows = (cells.size() + layout.columns - 1) / layout.columns;
    layout.width = kMargin + layout.columns * layout.cellWidth;
    layout.height = kMargin + rows * layout.cellHeight;
    layout.printLeft = kMargin + kFrame;
    layout.printTop = kMargin + captionHeight + kFrame;
    return layout;
}

Bitmap drawSheet(const std::vector<SheetCell>& cells) {
    const SheetLayout layout = layOutSheet(cells);
    Bitmap sheet(layout.width, layout.height);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const SheetCell& cell = cells[i];
        const std::uint64_t left = layout.printLeft + i % layout.columns * layout.cellWidth;
        const std::uint64_t top = layout.printTop + i / layout.columns * layout.cellHeight;
        lay(cell.print, left, top, sheet);
        frame(sheet, left - kFrame, top - kFrame, cell.print);
        lay(cell.caption, left - kFrame, top - kFrame - cell.caption.height, sheet);
    }
    return sheet;
}
