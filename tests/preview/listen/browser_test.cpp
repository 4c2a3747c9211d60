// The page in a browser, with jobs that the filter made.

#include <filesystem>

#include "preview/whole_file.h"
#include "tests/preview/listen/browser.h"
#include "tests/preview/listen/listen_test.h"
#include "tests/preview/read_png.h"
#include "tests/process/sandbox.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

class ListenBrowser : public ListenTest {
  protected:
    // What the filter sends to a printer for one page.
    static std::string filtered(unsigned width, unsigned height, const std::string& pixels) {
        Page page;
        page.width = width;
        page.height = height;
        page.pixels = pixels;
        const JobResult result = run_job(job_of({page}));
        EXPECT_EQ(result.exit_status, 0) << result.error;
        return result.output;
    }

    bool becomes_true(Browser& browser, const std::string& expression) {
        return wait_until([&] { return browser.evaluate(expression) == true; });
    }

    // The picture as the browser has it, '#' black and '.' white; empty when it is not loaded.
    static std::vector<std::string> rows_in(Browser& browser, const std::string& selector) {
        const auto rows = browser.evaluate(R"js((() => {
            const image = document.querySelector(')js" +
                                           selector + R"js(');
            if (!image || !image.complete || image.naturalWidth === 0) return [];
            const canvas = document.createElement('canvas');
            canvas.width = image.naturalWidth;
            canvas.height = image.naturalHeight;
            const context = canvas.getContext('2d');
            context.drawImage(image, 0, 0);
            const data = context.getImageData(0, 0, canvas.width, canvas.height).data;
            const rows = [];
            for (let y = 0; y < canvas.height; ++y) {
                let row = '';
                for (let x = 0; x < canvas.width; ++x)
                    row += data[4 * (y * canvas.width + x)] < 128 ? '#' : '.';
                rows.push(row);
            }
            return rows;
        })())js");
        return rows ? rows->get<std::vector<std::string>>() : std::vector<std::string>();
    }

    std::string url() { return "http://127.0.0.1:" + std::to_string(listener().web_port()) + "/"; }
};

TEST_F(ListenBrowser, ShowsALabelAndRenewsItselfForTheNext) {
    start();
    print(filtered(400, 240, asymmetric(400, 240)));
    Browser browser(dir / "browser");
    browser.open(url());

    const std::string picture = "img[src=\"/job/1/label-1.png\"]";
    ASSERT_TRUE(becomes_true(
        browser,
        "(i => i && i.complete && i.naturalWidth > 0)(document.querySelector('" + picture + "'))"));
    EXPECT_EQ(browser.evaluate("document.images.length"), 1);
    EXPECT_EQ(browser.evaluate("document.querySelector('" + picture + "').naturalWidth"), 400);
    const std::vector<std::string> printed = read_png(jobs() / "job-0001/label-1.png").rows;
    EXPECT_NE(printed.front().find('#'), std::string::npos);
    EXPECT_NE(printed.front(), printed.back());
    // the page may renew itself while its picture is read
    EXPECT_TRUE(wait_until([&] { return rows_in(browser, picture) == printed; }));
    EXPECT_EQ(browser.evaluate("document.querySelector('figcaption').innerText.includes('400 x')"),
              true);

    // The same tab, left alone, shows the next job.
    Random random(1);
    print(filtered(600, 300, text_bars(600, 300, random)));
    const std::string next = "img[src=\"/job/2/label-1.png\"]";
    ASSERT_TRUE(becomes_true(
        browser, "(i => i && i.complete && i.naturalWidth === 600)(document.querySelector('" +
                     next + "'))"));
    EXPECT_EQ(browser.evaluate("[...document.querySelectorAll('h2')].map(h => h.innerText)"),
              (nlohmann::json{"Job 2", "Job 1"}));
    EXPECT_TRUE(becomes_true(browser,
                             "document.images.length === 2 && "
                             "[...document.images].every(i => i.complete && i.naturalWidth > 0)"));
    const std::string shot = browser.screenshot();
    EXPECT_EQ(shot.substr(1, 3), "PNG");
    EXPECT_GT(shot.size(), 10'000U);
    std::filesystem::create_directories(KELP_ARTIFACTS);
    kelp_preview::writeWholeFile(KELP_ARTIFACTS "/preview-listen.png", shot);
}

}  // namespace
}  // namespace kelp_test
