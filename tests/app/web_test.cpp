// The application's pages for browsers.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "preview/png_writer.h"
#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/app/web_client.h"
#include "tests/preview/decoded.h"
#include "tests/preview/listen/browser.h"
#include "tests/preview/read_png.h"
#include "tests/support/files.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

class AppWeb : public AppTest {};

TEST_F(AppWeb, HasItsPages) {
    add_printer("label-4inch");
    for (const char* path :
         {"/", "/labels/", "/labels/media", "/labels/printing", "/labels/jobs", "/labels/config"}) {
        const std::string page = web_page(application.port(), path);
        EXPECT_NE(page.find("</html>"), std::string::npos) << path << "\n" << page;
        EXPECT_TRUE(application.is_running()) << path;
    }
    const std::string defaults = web_page(application.port(), "/labels/printing");
    EXPECT_NE(defaults.find("jarvis-judice-ninke"), std::string::npos) << defaults;
}

TEST_F(AppWeb, NamesItsOptionsInTheBrowsersLanguage) {
    add_printer("label-4inch");
    const auto page = [&](const char* language) {
        return web_page(application.port(), "/labels/printing", language);
    };
    EXPECT_NE(page("en").find(">Shades of grey:<"), std::string::npos) << page("en");
    EXPECT_NE(page("de").find(">Grautöne:<"), std::string::npos) << page("de");
    EXPECT_NE(page("ja").find(">グレーの表現:<"), std::string::npos) << page("ja");
}

// The rows of the pictures within a page.
std::vector<std::vector<std::string>> pictures(const Application& application,
                                               const std::string& page) {
    const std::string begin = "src=\"data:image/png;base64,";
    std::vector<std::vector<std::string>> all;
    for (std::size_t at = page.find(begin); at != std::string::npos;
         at = page.find(begin, at + 1)) {
        const std::size_t from = at + begin.size();
        const std::string encoded = page.substr(from, page.find('"', from) - from);
        std::string png(encoded.size(), '\0');
        int size = static_cast<int>(png.size());
        httpDecode64_2(png.data(), &size, encoded.c_str());
        png.resize(static_cast<std::size_t>(size));
        write_file(application.file("picture.png"), png);
        all.push_back(read_png(application.file("picture.png")).rows);
    }
    return all;
}

// The same of a stream that one label is printed by.
std::vector<std::string> picture_of(const Application& application, const std::string& stream) {
    const Decoded decoded = decode(stream);
    EXPECT_EQ(decoded.labels.size(), 1U);
    const std::filesystem::path file = application.file("expected.png");
    write_file(file, kelp_preview::pngOf(*decoded.labels.at(0).dots));
    return read_png(file).rows;
}

// A page of greys that no two halftones print alike.
Page greys() {
    Page page;
    page.width = 812;
    page.height = 1218;
    page.color_space = CUPS_CSPACE_SW;
    for (unsigned y = 0; y < page.height; ++y) {
        for (unsigned x = 0; x < page.width; ++x) {
            page.pixels += static_cast<char>((x * 255 / page.width + y / 8) % 256);
        }
    }
    return page;
}

TEST_F(AppWeb, ShowsTheLastLabelAsItPrintedAndInEveryHalftone) {
    add_printer("label-4inch");
    const std::string none = web_page(application.port(), "/labels/last-label");
    EXPECT_NE(none.find("No page was printed"), std::string::npos) << none;

    const std::vector<Page> pages = {greys()};
    const std::string sent =
        printed("image/pwg-raster", raster_stream(pages, CUPS_RASTER_WRITE_PWG));
    const std::string page = web_page(application.port(), "/labels/last-label");
    EXPECT_NE(page.find("Burkes (text with pictures)"), std::string::npos) << page;
    const std::vector<std::vector<std::string>> shown = pictures(application, page);
    ASSERT_EQ(shown.size(), 11U);
    EXPECT_EQ(shown[0], picture_of(application, sent));
    std::size_t next = 1;
    for (const char* choice : {"None", "FloydSteinberg", "Ordered", "Burkes", "Stucki",
                               "JarvisJudiceNinke", "Sierra", "StevensonArce"}) {
        const std::string option = std::string("HalftoneType=") + choice;
        EXPECT_EQ(shown[next++],
                  picture_of(application, filter_bytes("label-4inch", pages, option)))
            << choice;
    }
    EXPECT_EQ(std::set(shown.begin() + 1, shown.end()).size(), 10U);
}

TEST_F(AppWeb, IsSeenInABrowser) {
    add_printer("label-4inch");
    printed("image/pwg-raster", raster_stream({greys()}, CUPS_RASTER_WRITE_PWG));
    std::filesystem::create_directories(application.file("browser"));
    Browser browser(application.file("browser"));
    const std::string base = "http://localhost:" + std::to_string(application.port());
    std::filesystem::create_directories(KELP_ARTIFACTS);
    const std::vector<std::pair<std::string, std::string>> views = {
        {"/", "home"}, {"/labels/printing", "printing"}, {"/labels/last-label", "last-label"}};
    for (const auto& view : views) {
        const std::string& path = view.first;
        const std::string& name = view.second;
        browser.open(base + path);
        EXPECT_TRUE(wait_until([&] {
            return browser.evaluate("location.pathname === '" + path +
                                    "' && document.readyState === 'complete' && "
                                    "[...document.querySelectorAll('figure img')]"
                                    ".every(i => i.naturalWidth > 0)") == true;
        })) << path;
        const std::string shot = browser.screenshot();
        EXPECT_GT(shot.size(), 5'000U);
        write_file(std::filesystem::path(KELP_ARTIFACTS) / ("printer-app-" + name + ".png"), shot);
    }
    EXPECT_EQ(browser.evaluate("[...document.querySelectorAll('figure img')].length"), 11);
    EXPECT_EQ(browser.evaluate("document.querySelector('figure img').naturalWidth"), 816);
}

// Others' labels are nobody's business.
TEST(AppWebPassword, HidesTheLastLabel) {
    const TempDir directory;
    write_file(directory / "password", "secret\n");
    Application application({"password-file=" + (directory / "password").string()});
    const SocketPrinter device;
    application.add_printer("labels", "kelp-label-4inch", device.device());
    const IppPrinter printer(application.port(), "labels");
    printer.finished(
        printer.print("image/pwg-raster", raster_stream({greys()}, CUPS_RASTER_WRITE_PWG)));
    const std::string page = web_page(application.port(), "/labels/last-label");
    EXPECT_EQ(page.find("As it printed"), std::string::npos) << page;
    EXPECT_NE(page.find("password"), std::string::npos) << page;
}

// The framework would add the languages to the printer's attributes with each look.
TEST_F(AppWeb, ManyLooksLeaveTheAttributesAsTheyAre) {
    add_printer("label-4inch");
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(printer().attribute("printer-strings-languages-supported"), "");
    }
}

}  // namespace
}  // namespace kelp_test
