// Pages of documents. A document is a program that ghostscript runs.

#include "pictures/document_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/preview/read_png.h"
#include "tests/preview/sheet/sheet_program.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;
using kelp_test::Arguments;
using kelp_test::write_file;

// A document of the size 80 x 60 dots in points, with a bar at the left of the page.
std::string page(const std::string& program) {
    return "%!PS\n<< /PageSize [28.38 21.28] >> setpagedevice\n" + program + "\n";
}
const std::string bar = "0 0 7 22 rectfill showpage";  // 20 dots wide, the last in part

// A PDF of pages that are white but for a bar at the left of the last.
std::string pdf(int pages) {
    std::vector<std::string> objects{"<</Type/Catalog/Pages 2 0 R>>"};
    std::string kids;
    for (int i = 0; i < pages; ++i) {
        kids += std::to_string(4 + i) + " 0 R ";
    }
    objects.push_back("<</Type/Pages/Kids[" + kids + "]/Count " + std::to_string(pages) + ">>");
    objects.push_back("<</Length 16>>stream\n0 0 7.0 22 re f \nendstream");
    for (int i = 0; i < pages; ++i) {
        objects.push_back(std::string("<</Type/Page/Parent 2 0 R/MediaBox[0 0 28.38 21.28]") +
                          (i == pages - 1 ? "/Contents 3 0 R" : "") + ">>");
    }
    std::string file = "%PDF-1.4\n";
    std::string places = "0000000000 65535 f \n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const std::string place = std::to_string(file.size());
        places += std::string(10 - place.size(), '0') + place + " 00000 n \n";
        file += std::to_string(i + 1) + " 0 obj" + objects[i] + "endobj\n";
    }
    const std::string count = std::to_string(objects.size() + 1);
    return file + "xref\n0 " + count + "\n" + places + "trailer<</Root 1 0 R/Size " + count +
           ">>\nstartxref\n" + std::to_string(file.size()) + "\n%%EOF\n";
}

class Document : public kelp_test::SheetProgram {
  protected:
    // Black dots of the only print, of 84 x 60: a bar has 20 x 60, 23.81 %.
    std::string share(const std::string& file, const Arguments& more = {}) {
        Arguments arguments{"--halftone", "None", "-o", "out.png"};
        if (std::count(more.begin(), more.end(), "--page") == 0) {
            arguments.insert(arguments.end(), {"--page", "80x60"});
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        arguments.insert(arguments.end(), {"--", file});
        const kelp_test::ProcessResult result = sheet(arguments);
        EXPECT_EQ(result.exit_status, 0) << result.error;
        EXPECT_EQ(result.error, "");
        output = result.output;
        const std::size_t sign = result.output.find(" %\n");
        return sign == std::string::npos ? result.output : result.output.substr(sign - 5, 5);
    }
    std::string document_refusal(const std::string& content, const Arguments& more = {}) {
        write_file(dir / "document", content);
        Arguments arguments{"document", "--page", "80x60", "-o", "out.png"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return refusal(arguments);
    }
    std::string output;  // of the last share()

    // Of the folder, hidden files too.
    std::vector<std::string> names() {
        std::vector<std::string> result;
        for (const auto& entry : fs::directory_iterator(dir.path())) {
            result.push_back(entry.path().filename());
        }
        std::sort(result.begin(), result.end());
        return result;
    }
};

TEST_F(Document, IsDrawnInTheSizeOfThePage) {
    write_file(dir / "a.ps", page(bar));
    EXPECT_EQ(share("a.ps"), "23.81");
}

TEST_F(Document, IsEnlargedOrReducedToFitThePage) {
    write_file(dir / "a.ps", page(bar));
    // A bar of 7 points at twice the size: 7 * 203 / 72 * 2 = 39.47, the middles of 39 dots of 164,
    // as on paper.
    EXPECT_EQ(share("a.ps", {"--page", "160x200"}), "23.78");
    EXPECT_TRUE(output.ends_with(", each print 164 x 120\n")) << output;
    // At half the size 9.87, those of 10 dots of 44.
    EXPECT_EQ(share("a.ps", {"--page", "100x30"}), "22.73");
    EXPECT_TRUE(output.ends_with(", each print 44 x 30\n")) << output;
}

TEST_F(Document, NearlyAsLargeAsThePageIsDrawnInItsOwnSize) {
    // 800 x 600 dots.
    write_file(dir / "a.ps", "%!PS\n<< /PageSize [283.74 212.81] >> setpagedevice\nshowpage\n");
    share("a.ps", {"--page", "804x603"});
    EXPECT_TRUE(output.ends_with(", each print 804 x 600\n")) << output;
    share("a.ps", {"--page", "796x597"});  // what lies beyond is cut
    EXPECT_TRUE(output.ends_with(", each print 796 x 597\n")) << output;
    share("a.ps", {"--page", "820x615"});
    EXPECT_TRUE(output.ends_with(", each print 820 x 615\n")) << output;
}

TEST_F(Document, IsNeverTurned) {
    // A page as wide as high with a bar at its left, which every row crosses.
    write_file(dir / "a.ps",
               "%!PS\n<< /PageSize [28.38 28.38] >> setpagedevice 0 0 7 29 rectfill showpage\n");
    for (const char* size : {"80x80", "81x80", "80x81", "60x61", "61x60"}) {
        SCOPED_TRACE(size);
        share("a.ps", {"--page", size});
        const std::vector<std::string> rows = kelp_test::read_png(dir / "out.png").rows;
        // The print's last row lies above the frame and a margin of 24, behind the same at its
        // left.
        const std::string last = rows.at(rows.size() - 26).substr(25, 50);
        EXPECT_EQ(last.substr(0, 14), std::string(14, '#'));
        EXPECT_EQ(last.substr(21), std::string(29, '.'));
    }
}

TEST_F(Document, OfPdfHasPages) {
    write_file(dir / "a.pdf", pdf(3));
    EXPECT_EQ(share("a.pdf"), " 0.00");
    EXPECT_EQ(share("a.pdf", {"--page-number", "3"}), "23.81");
    write_file(dir / "b", "a mailer's line\n" + pdf(1));
    EXPECT_EQ(share("b"), "23.81");
}

TEST_F(Document, WithoutThePageIsRefused) {
    const std::string begin = "document: a document without a page 4 that ghostscript can draw";
    EXPECT_TRUE(document_refusal(pdf(3), {"--page-number", "4"}).starts_with(begin));
    EXPECT_EQ(names(), std::vector<std::string>{"document"});
}

TEST_F(Document, NamesThatMeanSomethingElsewhereAreNames) {
    for (const char* name : {"-dash.ps", "-sOutputFile=evil.ps", "@at.ps", "%stdin.ps", "a%d.ps",
                             "sp ace.ps", "new\nline.ps", "star*?.ps", "$(touch evil).ps",
                             "co:lon;.ps", "back\\slash.ps", "'\".ps"}) {
        SCOPED_TRACE(name);
        write_file(dir / name, page(bar));
        EXPECT_EQ(share(name), "23.81");
        fs::remove(dir / name);
    }
    EXPECT_EQ(names(), std::vector<std::string>{"out.png"});
}

TEST_F(Document, CannotTouchFilesOrRunPrograms) {
    write_file(dir / "victim", "kept");
    for (const std::string& program :
         Arguments{"(evil) (w) file", "(./evil) (a) file", "(%pipe%touch evil) (w) file",
                   "(%pipe%touch evil) (r) file", "(victim) deletefile", "(victim) (w) file",
                   "(victim) (evil) renamefile", "(victim) run", "(victim) (r) file",
                   "<< /OutputFile (evil) >> setpagedevice",
                   "<< /OutputFile (%pipe%touch evil) >> setpagedevice"}) {
        SCOPED_TRACE(program);
        const std::string words = document_refusal(page(program + " " + bar));
        EXPECT_TRUE(words.starts_with(
            "document: a document without a page 1 that ghostscript can draw: Error: /"))
            << words;
        EXPECT_EQ(names(), (std::vector<std::string>{"document", "victim"}));
    }
    EXPECT_EQ(kelp_test::read_file(dir / "victim"), "kept");
}

TEST_F(Document, LeavesNoTemporaryFile) {
    // Allowed in the folder for them, in which the test's own folder lies.
    write_file(dir / "a.ps", page("(" + (dir / "temporary-").string() + ") (w) .tempfile " + bar));
    EXPECT_EQ(share("a.ps"), "23.81");
    EXPECT_EQ(names(), (std::vector<std::string>{"a.ps", "out.png"}));
}

TEST_F(Document, CannotWriteToStandardOutputOrCommandTheTerminal) {
    EXPECT_TRUE(
        document_refusal(page("(P5 1 1 255 x) print flush quit")).ends_with("P5 1 1 255 x"));
    EXPECT_TRUE(document_refusal(page("(\\033]0;title\\007) print flush quit"))
                    .ends_with("\\x1B]0;title\\x07"));
}

TEST_F(Document, OfManyPagesShowsTheFirst) {
    write_file(dir / "a.ps", page("1 1 500 { pop " + bar + " } for"));
    EXPECT_EQ(share("a.ps"), "23.81");
}

TEST_F(Document, BrokenOnesAreRefused) {
    const std::string whole = pdf(1);
    for (const std::string& content :
         {std::string("%PDF-1.4\n"), std::string("%PDF-"), whole.substr(0, whole.find("/Pages")),
          std::string("%!"), std::string("%!PS\n"), std::string("%!PS\n) ( } showpage"),
          std::string("%!PS\n(unended"), "%PDF-1.4\n" + std::string(5000, '\xF1')}) {
        const std::string words = document_refusal(content);
        EXPECT_TRUE(words.starts_with("document: ")) << words;
        EXPECT_NE(words.find("ghostscript"), std::string::npos) << words;
    }
    EXPECT_EQ(names(), std::vector<std::string>{"document"});
}

TEST_F(Document, CutOffAnywhereGivesAnErrorOrAPicture) {
    const std::string whole = pdf(2);
    for (std::size_t length = 0; length < whole.size(); length += 47) {
        write_file(dir / "cut.pdf", whole.substr(0, length));
        const auto result = sheet({"cut.pdf", "--page", "80x60", "--halftone", "None"});
        EXPECT_TRUE(result.exit_status == 0 || result.exit_status == 1) << result.ending();
        if (result.exit_status == 1) {
            refusal_of(result);
        }
    }
}

TEST_F(Document, ThatNeverEndsIsEnded) {
    write_file(dir / "loop.ps", page("{ } loop"));
    write_file(dir / "pages.ps", page("{ showpage } loop"));
    for (const char* name : {"loop.ps", "pages.ps"}) {
        int calls = 0;
        try {
            pictureOfDocument(dir / name, 1, {80, 60}, [&] { ++calls; },
                              {.patience = std::chrono::milliseconds(300)});
            ADD_FAILURE() << name;
        } catch (const PictureError& error) {
            EXPECT_STREQ(error.what(), "ghostscript does not come to the end of it");
        }
        EXPECT_GT(calls, 0);
    }
}

TEST_F(Document, IsDrawnWithinTheMemoryItMayTake) {
    const auto dots = [&](const char* name, std::uint64_t memory) {
        return pictureOfDocument(dir / name, 1, {80, 60}, [] {}, {.memory = memory}).pixels;
    };
    constexpr std::uint64_t limit = 200'000'000;
    write_file(dir / "modest.ps", page(bar));
    const auto expected = dots("modest.ps", 0);
    EXPECT_EQ(dots("modest.ps", limit), expected);

    // Twice the limit: it prints where there is none.
    write_file(dir / "greedy.ps", page("[ 400 { 1000000 string } repeat ] pop " + bar));
    EXPECT_EQ(dots("greedy.ps", 0), expected);
    try {
        dots("greedy.ps", limit);
        ADD_FAILURE() << "it takes more than it may";
    } catch (const PictureError& error) {
        EXPECT_NE(std::string(error.what()).find("Error: /VMerror"), std::string::npos)
            << error.what();
    }
}

TEST_F(Document, LargerThanTheLimitIsNotDrawn) {
    write_file(dir / "a.ps", page(bar));
    EXPECT_EQ(refusal({"a.ps", "--page", "100000x100000"}),
              "a.ps: a picture of 100000 x 100000 pixels is over the limit of 200000000");
}

TEST_F(Document, WithoutGhostscriptIsRefused) {
    write_file(dir / "a.ps", page(bar));
    kelp_test::Command command = sheet_command({"a.ps"});
    command.environment["PATH"] = dir.path();
    EXPECT_EQ(refusal_of(run_process(command)), "gs is not installed");
}

}  // namespace
