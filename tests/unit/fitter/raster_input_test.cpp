#include "fitter/raster_input.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "fitter/fit_error.h"
#include "tests/fitter/rasters.h"
#include "tests/unit/fitter/memory_file.h"

// Linked in place of read: so many calls are interrupted first, and all are counted.
static int interruptions = 0;
static int reads = 0;

extern "C" ssize_t __real_read(int descriptor, void* bytes, std::size_t size);
extern "C" ssize_t __wrap_read(int descriptor, void* bytes, std::size_t size);
extern "C" ssize_t __wrap_read(int descriptor, void* bytes, std::size_t size) {
    ++reads;
    if (interruptions > 0) {
        --interruptions;
        errno = EINTR;
        return -1;
    }
    return __real_read(descriptor, bytes, size);
}

namespace kelp_test {
namespace {

// The rows of all pages, or what is wrong.
std::string read_all(int descriptor) {
    std::string rows;
    try {
        RasterInput input(descriptor);
        cups_page_header2_t header;
        while (input.readHeader(header)) {
            std::string row(header.cupsBytesPerLine, '\0');
            for (unsigned y = 0; y < header.cupsHeight; ++y) {
                if (!input.readRow(reinterpret_cast<unsigned char*>(row.data()),
                                   header.cupsBytesPerLine)) {
                    return rows + "(cut)";
                }
                rows += row;
            }
        }
    } catch (const FitError& error) {
        return rows + "(" + error.what() + ")";
    }
    return rows;
}

std::string read_all(const std::string& stream) {
    return read_all(memory_file(stream).get());
}

const std::vector<RawPage> two_pages{page_of(k8, 4, 2, "abcdefgh"), page_of(k8, 4, 1, "ijkl")};
constexpr const char* damaged =
    "(The raster to print is damaged: a page's header is cut or makes no sense.)";

TEST(RasterInput, ReadsEveryRow) {
    EXPECT_EQ(read_all(raw_raster_stream(two_pages)), "abcdefghijkl");
    EXPECT_EQ(read_all(written_by_libcups(two_pages, CUPS_RASTER_WRITE)), "abcdefghijkl");
    EXPECT_EQ(read_all(written_by_libcups(two_pages, CUPS_RASTER_WRITE_COMPRESSED)),
              "abcdefghijkl");
}

TEST(RasterInput, AStreamMayHaveNoPagesOrBeEmpty) {
    EXPECT_EQ(read_all(raw_raster_stream({})), "");
    EXPECT_EQ(read_all(std::string()), "");
}

TEST(RasterInput, TakesAPipesBytesAsTheyCome) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const Descriptor from(ends[0]);
    Descriptor to(ends[1]);
    std::thread writer([&] {
        for (const char byte : raw_raster_stream(two_pages)) {
            if (write(to.get(), &byte, 1) != 1) {
                break;
            }
        }
        to.reset();
    });
    EXPECT_EQ(read_all(from.get()), "abcdefghijkl");
    writer.join();
}

TEST(RasterInput, WaitsForAPipeThatDoesNotWait) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
    const Descriptor from(ends[0]);
    Descriptor to(ends[1]);
    std::thread writer([&] {
        const std::string stream = raw_raster_stream(two_pages);
        for (const std::string& part : {stream.substr(0, 100), stream.substr(100)}) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            if (write(to.get(), part.data(), part.size()) < 0) {
                break;
            }
        }
        to.reset();
    });
    reads = 0;
    EXPECT_EQ(read_all(from.get()), "abcdefghijkl");
    writer.join();
    // In vain and not, for each part and the end: a program that asks again and again makes
    // thousands.
    EXPECT_LE(reads, 6);
}

TEST(RasterInput, TellsACutRowFromTheEnd) {
    const std::string stream = raw_raster_stream(two_pages);
    EXPECT_EQ(read_all(stream.substr(0, stream.size() - 1)), "abcdefgh(cut)");
}

TEST(RasterInput, TellsACutHeaderFromTheEnd) {
    for (const cups_mode_t mode : {CUPS_RASTER_WRITE, CUPS_RASTER_WRITE_COMPRESSED}) {
        const std::string first = written_by_libcups({two_pages[0]}, mode);
        const std::string both = written_by_libcups(two_pages, mode);
        for (std::size_t size = 1; size < sizeof(cups_page_header2_t); ++size) {
            EXPECT_EQ(read_all(both.substr(0, first.size() + size)),
                      std::string("abcdefgh") + damaged)
                << size;
            EXPECT_EQ(read_all(both.substr(0, 4 + size)), damaged) << size;
        }
        EXPECT_EQ(read_all(first), "abcdefgh");
    }
}

// A whole header that libcups has read ahead and refuses.
TEST(RasterInput, TellsARefusedHeaderFromTheEnd) {
    const std::string first = written_by_libcups({two_pages[0]}, CUPS_RASTER_WRITE_COMPRESSED);
    EXPECT_EQ(read_all(first + std::string(sizeof(cups_page_header2_t), '\0')),
              std::string("abcdefgh") + damaged);
    EXPECT_EQ(read_all(first + std::string(100'000, '\0')), std::string("abcdefgh") + damaged);
}

TEST(RasterInput, ReadsOnWhereItIsInterrupted) {
    interruptions = 3;
    EXPECT_EQ(read_all(raw_raster_stream(two_pages)), "abcdefghijkl");
    EXPECT_EQ(interruptions, 0);
}

TEST(RasterInput, ReportsWhyItCannotRead) {
    const Descriptor folder(open("/", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(read_all(folder.get()), "(Unable to read the raster to print: Is a directory.)");
    EXPECT_EQ(read_all(-1), "(Unable to read the raster to print: Bad file descriptor.)");
}

TEST(RasterInput, RefusesWhatIsNoRaster) {
    for (const char* bytes : {"R", "3Sa", "%PDF-1.4", "%!PS-Adobe-3.0"}) {
        EXPECT_EQ(read_all(std::string(bytes)), "(The data to print is not CUPS raster.)") << bytes;
    }
}

}  // namespace
}  // namespace kelp_test
