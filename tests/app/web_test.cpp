// The application's pages for browsers.

#include <gtest/gtest.h>

#include "tests/app/app_test.h"
#include "tests/app/web_client.h"

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

// The framework would add the languages to the printer's attributes with each look.
TEST_F(AppWeb, ManyLooksLeaveTheAttributesAsTheyAre) {
    add_printer("label-4inch");
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(printer().attribute("printer-strings-languages-supported"), "");
    }
}

}  // namespace
}  // namespace kelp_test
