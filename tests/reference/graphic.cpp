#include "tests/reference/graphic.h"

namespace reference {

Graphic readGraphic(const std::string& data, unsigned rowBytes, unsigned rows) {
    const std::size_t rowDigits = rowBytes * std::size_t{2};
    const std::size_t allDigits = rowDigits * rows;
    Graphic graphic;
    std::string digits;
    std::size_t repeat = 0;

    for (char c : data) {
        // A command ends the data.
        if (c == '^' || c == '~')
            break;
        // Line ends mean nothing.
        if (c == '\r' || c == '\n')
            continue;
        // Behind the last row nothing is read any more.
        if (digits.size() == allDigits) {
            graphic.clean = false;
            continue;
        }
        // G to Y repeat 1 to 19 times, g to z 20 to 400 times; they add up.
        if (c >= 'G' && c <= 'Y') {
            repeat += static_cast<std::size_t>(c - 'G') + 1;
            continue;
        }
        if (c >= 'g' && c <= 'z') {
            repeat += (static_cast<std::size_t>(c - 'g') + 1) * 20;
            continue;
        }
        // A digit, as often as the letters before it say, through the ends of rows.
        if (c >= 'a' && c <= 'f')
            c = static_cast<char>(c - 'a' + 'A');
        if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F')) {
            const std::size_t left = rowDigits - digits.size() % rowDigits;
            if (repeat > left)
                graphic.clean = false;
            if (repeat == 0)
                repeat = 1;
            for (; repeat > 0; repeat--)
                if (digits.size() < allDigits)
                    digits.push_back(c);
            continue;
        }
        // Letters repeat nothing but a digit.
        if (repeat != 0)
            graphic.clean = false;
        repeat = 0;
        if (c == ',') {
            do
                digits.push_back('0');
            while (digits.size() % rowDigits != 0);
        } else if (c == '!') {
            do
                digits.push_back('F');
            while (digits.size() % rowDigits != 0);
        } else if (c == ':') {
            // As the row above, from here on; white where there is none.
            if (digits.size() % rowDigits != 0)
                graphic.clean = false;
            do
                digits.push_back(digits.size() < rowDigits ? '0'
                                                           : digits[digits.size() - rowDigits]);
            while (digits.size() % rowDigits != 0);
        } else {
            graphic.clean = false;
        }
    }

    if (repeat != 0 || digits.size() != allDigits)
        graphic.clean = false;
    for (std::size_t i = 0; i + rowDigits <= digits.size(); i += rowDigits)
        graphic.rows.push_back(digits.substr(i, rowDigits));
    return graphic;
}

}  // namespace reference
