#include "tests/reference/dither.h"

namespace reference {

namespace {

struct Tap {
    long dx;
    long dy;
    long weight;
};

struct Kernel {
    long divisor;
    std::vector<Tap> taps;
};

const int kOrdered[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};

// clang-format off
Kernel kernelOf(long method) {
    switch (method) {
        case 2:  // Burkes
            return {32, {                               {1, 0, 8}, {2, 0, 4},
                         {-2, 1, 2}, {-1, 1, 4}, {0, 1, 8}, {1, 1, 4}, {2, 1, 2}}};
        case 3:  // Stucki
            return {42, {                               {1, 0, 8}, {2, 0, 4},
                         {-2, 1, 2}, {-1, 1, 4}, {0, 1, 8}, {1, 1, 4}, {2, 1, 2},
                         {-2, 2, 1}, {-1, 2, 2}, {0, 2, 4}, {1, 2, 2}, {2, 2, 1}}};
        case 4:  // Jarvis, Judice and Ninke
            return {48, {                               {1, 0, 7}, {2, 0, 5},
                         {-2, 1, 3}, {-1, 1, 5}, {0, 1, 7}, {1, 1, 5}, {2, 1, 3},
                         {-2, 2, 1}, {-1, 2, 3}, {0, 2, 5}, {1, 2, 3}, {2, 2, 1}}};
        case 5:  // Sierra
            return {32, {                               {1, 0, 5}, {2, 0, 3},
                         {-2, 1, 2}, {-1, 1, 4}, {0, 1, 5}, {1, 1, 4}, {2, 1, 2},
                                     {-1, 2, 2}, {0, 2, 3}, {1, 2, 2}}};
        case 6:  // Stevenson and Arce
            return {200, {{2, 0, 32},
                          {-3, 1, 12}, {-1, 1, 26}, {1, 1, 30}, {3, 1, 16},
                          {-2, 2, 12}, {0, 2, 26}, {2, 2, 12},
                          {-3, 3, 5}, {-1, 3, 12}, {1, 3, 12}, {3, 3, 5}}};
        default:  // Floyd and Steinberg
            return {16, {                   {1, 0, 7},
                         {-1, 1, 3}, {0, 1, 5}, {1, 1, 1}}};
    }
}
// clang-format on

GrayImage diffuse(const GrayImage& image, const Kernel& kernel) {
    GrayImage source = image;  // carries the error
    GrayImage out = image;
    for (long y = 0; y < image.height; y++) {
        for (long x = 0; x < image.width; x++) {
            long v = source.at(x, y);
            long e = 0;
            if (v <= 128) {
                out.set(x, y, 0);
                e = v;
            } else {
                out.set(x, y, 1);
                e = v - 255;
            }
            for (const Tap& tap : kernel.taps) {
                long nx = x + tap.dx;
                long ny = y + tap.dy;
                if (nx < 0 || nx >= image.width || ny < 0 || ny >= image.height)
                    continue;
                long n = source.at(nx, ny) + (e * tap.weight) / kernel.divisor;
                if (n < 0)
                    n = 0;
                if (n > 255)
                    n = 255;
                source.set(nx, ny, static_cast<int>(n));
            }
        }
    }
    return out;
}

int threshold(int v) {
    return v <= 128 ? 0 : 1;
}

int ordered(int v, long x, long y) {
    const int level[3] = {0, 1, 0};  // offset is 1 only where m is 0, which never takes level[2]
    int d = (v * 16) / 255;
    int m = d % 16;
    int offset = d / 16;
    if (kOrdered[y % 4][x % 4] < m)
        return level[offset + 1];
    return level[offset];
}

std::vector<int> bayerTable() {
    const int order = 4;
    std::vector<int> table;
    for (int i = 0; i < 1 << (2 * order); i++) {
        int a = i / order;
        int b = i % order;
        int value = 0;
        for (int k = 0; k < order; k++) {
            value = (((value * 2) | ((a ^ b) & 1)) * 2) | (b & 1);
            a >>= 1;
            b >>= 1;
        }
        table.push_back(value & 255);
    }
    return table;
}

}  // namespace

GrayImage dither(const GrayImage& image, long method) {
    if (method >= 2 && method <= 6)
        return diffuse(image, kernelOf(method));
    if (method != 0 && method != 1 && method != 7)
        return diffuse(image, kernelOf(8));

    const std::vector<int> bayer = bayerTable();
    GrayImage out = image;
    for (long y = 0; y < image.height; y++) {
        for (long x = 0; x < image.width; x++) {
            int v = image.at(x, y);
            if (method == 0)
                out.set(x, y, threshold(v));
            else if (method == 1)
                out.set(x, y, ordered(v, x, y));
            else
                out.set(x, y, v <= bayer[static_cast<std::size_t>(x % 4 + 4 * (y % 4))] ? 0 : 1);
        }
    }
    return out;
}

}  // namespace reference
