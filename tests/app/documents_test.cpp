// Pictures and PDF documents: the same dots as a raster of them.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/preview/sheet/picture_files.h"
#include "tests/spooler/documents.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

class AppDocuments : public AppTest {
  protected:
    std::string document(Format format, const Sheet& sheet, const std::string& postscript,
                         int dots_per_inch = 203) {
        const std::filesystem::path file = application.file("document");
        make_document(file, format, sheet, postscript, dots_per_inch);
        return read_file(file);
    }
    IppJob aborted(const std::string& format, const std::string& bytes,
                   const IppPrinter::Ticket& ticket = {}) {
        const int number = printer().print(format, bytes, ticket);
        const IppJob job = printer().finished(number);
        EXPECT_EQ(job.state, IPP_JSTATE_ABORTED) << job.reasons << "\n" << job.message;
        return job;
    }
};

constexpr Sheet kLabel{288, 432};

struct Stripe {
    unsigned left;
    unsigned width;
};

// A label with black stripes from top to bottom.
Page striped(const std::vector<Stripe>& stripes) {
    Page page;
    page.width = 812;
    page.height = 1218;
    page.color_space = CUPS_CSPACE_SW;
    std::string row(page.width, '\xFF');
    for (const Stripe& stripe : stripes) {
        row.replace(stripe.left, stripe.width, stripe.width, '\0');
    }
    for (unsigned y = 0; y < page.height; ++y) {
        page.pixels += row;
    }
    return page;
}

TEST_F(AppDocuments, APictureWithTheLabelsResolutionIsPrintedDotForDot) {
    add_printer("label-4inch");
    const std::string sent =
        printed("image/png", document(Format::png, kLabel, asymmetric_picture(kLabel)));
    // 812 x 1218 dots: the block of 36 points is 101.5 wide and high, at 203 dots to 72.
    EXPECT_NE(sent.find("~DGR:CUPS.GRF,124236,102,\n"), std::string::npos);
    // The first row begins with black: 102 dots are 25 digits of F and half a C.
    EXPECT_NE(sent.find(",102,\ngKFC"), std::string::npos) << sent.substr(0, 400);
}

TEST_F(AppDocuments, ThePartsOfAPdfAreAsWideAsTheyAreDrawn) {
    add_printer("label-4inch");
    // At 203 dots to 72 points: from 57.2 to 60.8, and from 65.7 to 69.2. A dot is painted where
    // its middle is.
    const std::string bars = "0 setgray 20.3 0 1.25 432 rectfill 23.3 0 1.25 432 rectfill showpage";
    EXPECT_EQ(printed("application/pdf", document(Format::pdf, kLabel, bars)),
              filter_bytes("label-4inch", {striped({{57, 4}, {66, 3}})}));
}

TEST_F(AppDocuments, ANarrowPdfLiesInTheMiddle) {
    add_printer("label-4inch");
    // As high as the label and half as wide, 406 dots: 203 are left at each side. Its left edge has
    // a bar of 10 points, 28.2 dots.
    EXPECT_EQ(printed("application/pdf",
                      document(Format::pdf, {144, 432}, "0 setgray 0 0 10 432 rectfill showpage")),
              filter_bytes("label-4inch", {striped({{203, 28}})}));
}

std::string pdf_stream(const std::string& entries, const std::string& content) {
    return "<<" + entries + "/Length " + std::to_string(content.size()) + ">>stream\n" + content +
           "\nendstream endobj\n";
}

// A small file whose one page takes many minutes: a form that paints one ten times, which does the
// same, and so on. Without a table of its objects: ghostscript finds them.
std::string endless_pdf() {
    constexpr int forms = 10;
    std::string file =
        "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
        "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
        "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 288 432]"
        "/Resources<</XObject<</F 5 0 R>>>>/Contents 4 0 R>>endobj\n"
        "4 0 obj" +
        pdf_stream("", "/F Do");
    std::string ten_times;
    for (int i = 0; i < 10; ++i) {
        ten_times += "/F Do ";
    }
    for (int i = 0; i < forms; ++i) {
        const std::string next = std::to_string(6 + i);
        const std::string entries = "/Type/XObject/Subtype/Form/BBox[0 0 288 432]";
        file += std::to_string(5 + i) + " 0 obj";
        file +=
            i == forms - 1
                ? pdf_stream(entries, "0 0 9 9 re f")
                : pdf_stream(entries + "/Resources<</XObject<</F " + next + " 0 R>>>>", ten_times);
    }
    return file + "trailer<</Root 1 0 R>>\n";
}

// The folders in /proc of those that draw a document of the folder.
std::vector<std::filesystem::path> ghostscripts(const std::string& folder) {
    std::vector<std::filesystem::path> found;
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
        std::ifstream file(process.path() / "cmdline");
        const std::string arguments{std::istreambuf_iterator<char>(file), {}};
        if (arguments.starts_with("gs") && arguments.find(folder) != std::string::npos &&
            arguments.find("-sDEVICE=pgmraw") != std::string::npos) {
            found.push_back(process.path());
        }
    }
    return found;
}

TEST_F(AppDocuments, APdfThatIsCancelledWhileItIsDrawnEndsWithItsGhostscript) {
    add_printer("label-4inch");
    const std::string folder = application.state_folder();
    const int number = printer().print("application/pdf", endless_pdf());
    ASSERT_TRUE(wait_until([&] { return ghostscripts(folder).size() == 1; }));
    EXPECT_NE(read_file(ghostscripts(folder).at(0) / "limits")
                  .find("Max address space         1073741824 "),
              std::string::npos);
    const auto start = std::chrono::steady_clock::now();
    printer().cancel(number);
    EXPECT_EQ(printer().finished(number).state, IPP_JSTATE_CANCELED);
    // Far from the minute after which it would be given up.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(ghostscripts(folder).size(), 0U);
    for (const std::string& bytes : device.received()) {
        EXPECT_EQ(bytes, "");
    }
    // The next one prints.
    const std::string bar = "0 setgray 0 0 10 432 rectfill showpage";
    EXPECT_EQ(printed("application/pdf", document(Format::pdf, kLabel, bar)),
              filter_bytes("label-4inch", {striped({{0, 28}})}));
}

TEST_F(AppDocuments, APdfOfManyPagesComesPageByPage) {
    add_printer("label-4inch");
    const std::string pdf = document(Format::pdf, kLabel, numbered_pages(5));
    const std::string all = printed("application/pdf", pdf);
    std::size_t labels = 0;
    for (std::size_t at = all.find("~DG"); at != std::string::npos; at = all.find("~DG", at + 1)) {
        ++labels;
    }
    EXPECT_EQ(labels, 5U);
    const std::string some = printed("application/pdf", pdf, [](ipp_t* job) {
        ippAddRange(job, IPP_TAG_JOB, "page-ranges", 2, 3);
    });
    const std::string preamble(64, '\n');
    EXPECT_TRUE(some.starts_with(preamble));
    EXPECT_NE(all.find(some.substr(preamble.size())), std::string::npos);
}

TEST_F(AppDocuments, APdfOfAnotherSizeIsFittedIntoTheMiddle) {
    add_printer("label-4inch");
    // Twice the size, drawn at half the resolution: the same dots as the small one.
    const std::string large = "2 2 scale " + asymmetric_picture(kLabel);
    EXPECT_EQ(
        printed("application/pdf", document(Format::pdf, {576, 864}, large)),
        printed("application/pdf", document(Format::pdf, kLabel, asymmetric_picture(kLabel))));
}

TEST_F(AppDocuments, ABrokenPdfTellsThatItIs) {
    add_printer("label-4inch");
    const IppJob broken = aborted("application/pdf", "%PDF-1.7\nand no more");
    EXPECT_NE(broken.message.find("a broken PDF: ghostscript finds no page in it"),
              std::string::npos)
        << broken.message;
    EXPECT_NE(broken.reasons.find("document-format-error"), std::string::npos) << broken.reasons;
}

TEST_F(AppDocuments, AJpegIsPrinted) {
    add_printer("stencil-a5");
    const std::string drawing = asymmetric_picture({420, 595});
    const std::string sent = printed("image/jpeg", document(Format::jpeg, {420, 595}, drawing),
                                     media_size(14800, 21000));
    EXPECT_NE(sent.find("~DGR:CUPS.GRF,"), std::string::npos);
    EXPECT_GT(sent.size(), 5'000U);
}

// A label, white but for a black block.
Page with_block(unsigned left, unsigned top, unsigned width, unsigned height) {
    Page page = striped({});
    for (unsigned y = top; y < top + height; ++y) {
        page.pixels.replace(std::size_t{y} * page.width + left, width, width, '\0');
    }
    return page;
}

std::string black_png(unsigned width, unsigned height, unsigned pixels_per_metre = 0) {
    return png_file({.width = width,
                     .height = height,
                     .rows = std::string(std::size_t{width} * height, '\0'),
                     .pixels_per_metre = pixels_per_metre});
}

TEST_F(AppDocuments, APictureOfLessThanADotIsADot) {
    add_printer("label-4inch");
    // 300 dots per inch: 0.7 of a dot.
    EXPECT_EQ(printed("image/png", black_png(1, 1, 11811)),
              filter_bytes("label-4inch", {with_block(405, 608, 1, 1)}));
}

TEST_F(AppDocuments, APictureIsScaledAsTheJobSays) {
    add_printer("label-4inch");
    const auto printed_by = [&](const std::string& png, const char* scaling) {
        return printed("image/png", png, keyword("print-scaling", scaling));
    };
    const auto block = [](unsigned left, unsigned top, unsigned width, unsigned height) {
        return filter_bytes("label-4inch", {with_block(left, top, width, height)});
    };
    EXPECT_EQ(printed_by(black_png(1, 1300), "fit"), block(405, 0, 1, 1218));
    EXPECT_EQ(printed_by(black_png(406, 406), "fit"), block(0, 203, 812, 812));
    EXPECT_EQ(printed_by(black_png(406, 406), "auto-fit"), block(0, 203, 812, 812));
    EXPECT_EQ(printed_by(black_png(406, 406), "fill"), block(0, 0, 812, 1218));
    EXPECT_EQ(printed_by(black_png(406, 406), "auto"), block(0, 0, 812, 1218));
    EXPECT_EQ(printed_by(black_png(406, 406), "none"), block(203, 406, 406, 406));
    // 406 dots per inch.
    EXPECT_EQ(printed_by(black_png(406, 406, 15984), "none"), block(304, 507, 203, 203));
    EXPECT_EQ(printed_by(black_png(406, 406, 15984), "auto"), block(304, 507, 203, 203));
}

TEST_F(AppDocuments, AWidePictureIsTurnedUnlessTheJobSaysHowItLies) {
    add_printer("label-4inch");
    // Black but for its left half.
    std::string half;
    for (int row = 0; row < 203; ++row) {
        half += std::string(203, '\xFF') + std::string(203, '\0');
    }
    const std::string wide =
        png_file({.width = 406, .height = 203, .rows = half, .pixels_per_metre = 7992});
    const auto block = [](unsigned left, unsigned top, const char* options = "") {
        return filter_bytes("label-4inch", {with_block(left, top, 203, 203)}, options);
    };
    const auto lying = [&](int orientation) {
        return printed("image/png", wide, [=](ipp_t* job) {
            ippAddInteger(job, IPP_TAG_JOB, IPP_TAG_ENUM, "orientation-requested", orientation);
        });
    };
    // Counterclockwise the right half comes to lie above.
    EXPECT_EQ(printed("image/png", wide), block(304, 406));
    EXPECT_EQ(lying(IPP_ORIENT_NONE), block(304, 406));
    EXPECT_EQ(lying(IPP_ORIENT_PORTRAIT), block(406, 507));
    EXPECT_EQ(lying(IPP_ORIENT_LANDSCAPE), block(304, 406));
    EXPECT_EQ(lying(IPP_ORIENT_REVERSE_LANDSCAPE), block(304, 609));
    EXPECT_EQ(lying(IPP_ORIENT_REVERSE_PORTRAIT), block(406, 507, "Origin=Rotation180"));
}

TEST_F(AppDocuments, APdfIsTurnedAsTheJobSays) {
    add_printer("label-4inch");
    // As wide as the label is long, 1218 dots; black but for its left half.
    const std::string half = document(Format::pdf, {432, 288}, "216 0 216 288 rectfill showpage");
    const auto lying = [&](int orientation) {
        return printed("application/pdf", half, [=](ipp_t* job) {
            ippAddInteger(job, IPP_TAG_JOB, IPP_TAG_ENUM, "orientation-requested", orientation);
        });
    };
    EXPECT_EQ(lying(IPP_ORIENT_LANDSCAPE),
              filter_bytes("label-4inch", {with_block(0, 0, 812, 609)}));
    EXPECT_EQ(lying(IPP_ORIENT_REVERSE_LANDSCAPE),
              filter_bytes("label-4inch", {with_block(0, 609, 812, 609)}));
}

TEST_F(AppDocuments, MarginsThatMeanNothingDoNoHarm) {
    add_printer("label-4inch");
    const std::string png =
        png_file({.width = 160, .height = 16'384, .rows = std::string(160 * 16'384, '\0')});
    const std::string sent = printed("image/png", png, [](ipp_t* job) {
        ipp_t* media = ippNew();
        for (const char* side : {"left", "right"}) {
            ippAddInteger(media, IPP_TAG_ZERO, IPP_TAG_INTEGER,
                          ("media-" + std::string(side) + "-margin").c_str(), -1'750'000);
        }
        for (const char* side : {"top", "bottom"}) {
            ippAddInteger(media, IPP_TAG_ZERO, IPP_TAG_INTEGER,
                          ("media-" + std::string(side) + "-margin").c_str(), -20'000);
        }
        ippAddCollection(job, IPP_TAG_JOB, "media-col", media);
        ippDelete(media);
        ippAddString(job, IPP_TAG_JOB, IPP_TAG_KEYWORD, "print-scaling", nullptr, "fit");
    });
    // 160 pixels of 16384 on 1218 dots: 12.
    EXPECT_EQ(sent, filter_bytes("label-4inch", {with_block(400, 0, 12, 1218)}));
}

TEST_F(AppDocuments, APictureThatIsTooLongIsRefused) {
    add_printer("label-4inch");
    const IppJob job = aborted("image/png", black_png(20'001, 1), keyword("print-scaling", "fit"));
    EXPECT_NE(job.message.find("a side over 20000 pixels cannot be scaled"), std::string::npos)
        << job.message;
}

}  // namespace
}  // namespace kelp_test
