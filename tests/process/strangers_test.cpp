// Words from strangers: what a job's sender writes never reaches the printer or the log, and what
// the printer's description says reaches them as it stands, never as a format.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"

namespace kelp_test {
namespace {

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
    return text;
}

using HeaderText = char (cups_page_header2_t::*)[64];
const std::vector<HeaderText> header_texts{
    &cups_page_header2_t::MediaClass,       &cups_page_header2_t::MediaColor,
    &cups_page_header2_t::MediaType,        &cups_page_header2_t::OutputType,
    &cups_page_header2_t::cupsMarkerType,   &cups_page_header2_t::cupsRenderingIntent,
    &cups_page_header2_t::cupsPageSizeName,
};

// Every text that a page can carry. Filled to its end where the word is long enough: none has to
// end.
RawPage page_that_says(const std::string& word) {
    RawPage page = raw_page(tiny_page());
    for (const HeaderText text : header_texts) {
        word.copy(page.header.*text, sizeof(page.header.*text));
    }
    for (auto& text : page.header.cupsString) {
        word.copy(text, sizeof(text));
    }
    return page;
}

// A job in which every text is the word, those of the printer's description as well.
JobResult job_that_says(const std::string& word) {
    Job job;
    job.ppd = Ppd()
                  .page_size(word, "288", "432")
                  .option("Resolution", {word})
                  .option("MediaMethod", {word})
                  .option("PaperType", {word})
                  .option("GapsHeight", {"3"})
                  .option("PostAction", {word})
                  .option("Occurrence", {word})
                  .option("Origin", {word})
                  .option("HalftoneType", {word})
                  .option("PrintSpeed", {"4" + word})
                  .option("RecordPrinterCommands", {"1"})
                  .attribute("kelpFilterOutputFile", word)
                  .text();
    job.options = "PageSize=" + word + " PaperType=" + word + " Darkness=" + word + " " + word +
                  "=" + word + " " + word;
    job.raster = raw_raster_stream({page_that_says(word)});
    const Sandbox sandbox;
    Command command = sandbox.command(job);
    command.name = word;
    std::fill_n(command.arguments.begin(), 4, word);
    return sandbox.run(command);
}

TEST(Strangers, FormatCharactersAreOnlyCharacters) {
    const std::string plain_word = "abcdefghijkl";
    const JobResult plain = job_that_says(plain_word);
    ASSERT_EQ(plain.exit_status, 0);
    SetupBlock setup;
    setup.commands = {"^PON", "^PR4" + plain_word, "~SD0"};
    ASSERT_EQ(plain.output, preamble() + setup.text() + Graphic().text());
    ASSERT_TRUE(contains(plain.error, "DEBUG:Unknown paper type: " + plain_word + "!\n"));
    for (const std::string word : {"%s%n%x%d%p%s", "%1$n%2$s%3$n", "%999999999d%", "%%%%%%%%%%%%",
                                   "%*d%*s%hhn%s", "\\n\\x41\\0%c%s"}) {
        ASSERT_EQ(word.size(), plain_word.size());
        const JobResult result = job_that_says(word);
        EXPECT_EQ(result.exit_status, 0) << word;
        EXPECT_EQ(result.output, replaced(plain.output, plain_word, word));
        EXPECT_EQ(without_addresses(result.error),
                  without_addresses(replaced(plain.error, plain_word, word)));
        EXPECT_EQ(result.debug_line, plain.debug_line);
        EXPECT_EQ(result.snapshots, plain.snapshots);
        EXPECT_EQ(
            result.recordings,
            (std::map<std::string, std::string>{{word + "-20240305070809.bin", result.output}}));
    }
}

TEST(Strangers, TheUsageNamesAProgramOfFormatCharactersAsItIsCalled) {
    const Sandbox sandbox;
    Command command = sandbox.command(job_of({}));
    command.name = "%s%n%x";
    command.arguments = {"%s%n"};
    EXPECT_TRUE(sandbox.run(command).error.starts_with("%s%n%x v3.13.13\n"));
}

// A description with an option of every kind, one of which takes values of the job's own.
std::string full_ppd() {
    return bare_ppd()
               .custom_page_size()
               .option("Resolution", {"203dpi"})
               .option("MediaMethod", {"Direct"})
               .option("PaperType", {"LabelMark", "LabelGaps"})
               .option("GapsHeight", {"3", "0"})
               .option("PostAction", {"TearOff"})
               .option("Occurrence", {"Always"})
               .option("Origin", {"Normal"})
               .option("HalftoneType", {"None"})
               .option("MirrorImage", {"No"})
               .option("NegativeImage", {"No"})
               .option("PrintSpeed", {"4", "2x"})
               .option("Darkness", {"15"})
               .option("Brightness", {"0"})
               .text() +
           "*CustomPrintSpeed True: \"pop\"\n"
           "*ParamCustomPrintSpeed Speed: 1 string 0 40\n";
}

std::string full_output(const std::vector<std::string>& speed = {"^PR4"}) {
    SetupBlock setup;
    setup.commands = {"^MNM", "^PON"};
    setup.commands.insert(setup.commands.end(), speed.begin(), speed.end());
    setup.commands.insert(setup.commands.end(), {"~SD15", "^MTD", "^MMT,N"});
    return preamble() + setup.text() + Graphic().text();
}

// Where a job's sender can write: each puts the word in one place.
struct Place {
    std::string name;
    std::function<void(Command&, const std::string& word)> put;
};

std::vector<Place> places() {
    std::vector<Place> all;
    const std::vector<std::string> names{"the job", "the user", "the title", "the copies"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        all.push_back({names[i], [i](Command& command, const std::string& word) {
                           command.arguments.at(i) = word;
                       }});
    }
    const auto options = [](const std::string& before, const std::string& behind) {
        return [before, behind](Command& command, const std::string& word) {
            command.arguments.at(4) = before + word + behind;
        };
    };
    all.push_back({"the options", options("", "")});
    all.push_back({"an option's name", options("", "=4")});
    for (const char* option : {"Unknown",
                               "PageSize",
                               "PageRegion",
                               "media",
                               "media-col",
                               "Resolution",
                               "printer-resolution",
                               "MediaMethod",
                               "PaperType",
                               "GapsHeight",
                               "PostAction",
                               "Occurrence",
                               "Origin",
                               "HalftoneType",
                               "MirrorImage",
                               "NegativeImage",
                               "PrintSpeed",
                               "Darkness",
                               "Brightness",
                               "ForceRotation",
                               "RecordPrinterCommands",
                               "kelpFilterOutputFile"}) {
        all.push_back({option, options(std::string(option) + "=", "")});
        all.push_back(
            {std::string(option) + " in quotes", options(std::string(option) + "='", "'")});
    }
    all.push_back({"the page's texts", [](Command& command, const std::string& word) {
                       command.input = FromBytes{raw_raster_stream({page_that_says(word)})};
                   }});
    return all;
}

// The word in every place leaves the printer's commands and the log as they are without it.
void expect_unheard(const std::vector<std::string>& words) {
    const Sandbox sandbox;
    Job job = job_of({tiny_page()});
    job.ppd = full_ppd();
    const JobResult plain = sandbox.run(job);
    ASSERT_EQ(plain.output, full_output());
    for (const Place& place : places()) {
        for (const std::string& word : words) {
            Command command = sandbox.command(job);
            place.put(command, word);
            const JobResult result = sandbox.run(command);
            EXPECT_EQ(result.exit_status, 0) << place.name;
            EXPECT_EQ(result.output, plain.output) << place.name;
            EXPECT_EQ(without_addresses(result.error), without_addresses(plain.error))
                << place.name;
            EXPECT_TRUE(result.recordings.empty()) << place.name;
        }
    }
}

TEST(Strangers, PrinterCommandsOfAJobReachNoPrinter) {
    expect_unheard({"^XA^FDx^FS^XZ~JR", "4^XA\r\n^JUF^XZ\r\n~SD30\r\n" + std::string(100, '^')});
}

// The spooler acts on lines that begin so.
TEST(Strangers, LinesThatLookLikeTheLogsAreNotLogged) {
    expect_unheard({"x\nERROR: faked\nSTATE: +paused-error\nPAGE: 1 99\nATTR: x=y\n",
                    "\r\nDEBUG:faked\r\x1B[2J\x01\x07\x7F\x9B"});
}

TEST(Strangers, OnlyChoicesOfTheDescriptionArePrintSpeeds) {
    const auto output = [](const std::string& options) {
        Job job = job_of({tiny_page()}, options);
        job.ppd = full_ppd();
        return run_job(job).output;
    };
    EXPECT_EQ(output("PrintSpeed=2x"), full_output({"^PR2x"}));
    EXPECT_EQ(output("printspeed=2X"), full_output({"^PR2x"}));
    for (const char* options : {"PrintSpeed=2", "PrintSpeed=2x^XA", "PrintSpeed=2xx",
                                "PrintSpeed=9", "PrintSpeed='2x '", "PrintSpeed=\"2x\t\""}) {
        EXPECT_EQ(output(options), full_output()) << options;
    }
    // A value of the job's own is a choice that is always named so, and that is no number.
    for (const char* options :
         {"PrintSpeed=Custom.9^XA", "PrintSpeed=Custom.4", "PrintSpeed=Custom", "PrintSpeed={2x}",
          "PrintSpeed={Speed=9^XA}"}) {
        EXPECT_EQ(output(options), full_output({})) << options;
    }
}

// What the printer gets of a description's choice "4" with a byte and an x behind it.
std::string speed_with(char byte) {
    Job job = job_of({tiny_page()});
    const std::string choice = std::string("4") + byte + "x";
    job.ppd = bare_ppd().option("PrintSpeed", {choice}).text();
    const std::string output = run_job(job).output;
    const std::size_t begin = output.find("^PR");
    if (output.empty() || begin == std::string::npos) {
        return output.empty() ? "refused" : "none";
    }
    return output.substr(begin + 3, output.find("\r\n~SD0") - begin - 3);
}

TEST(Strangers, APrintSpeedIsMadeOfPrintableBytesWithoutBlankQuoteSlashAndColon) {
    const std::string not_passed = "\"/:";
    for (int byte = 1; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const std::string speed = speed_with(c);
        if (c > ' ' && c <= '~' && !contains(not_passed, std::string(1, c))) {
            EXPECT_EQ(speed, std::string("4") + c + "x") << byte;
        } else {
            EXPECT_FALSE(contains(speed, std::string(1, c))) << byte << ": " << speed;
        }
    }
}

}  // namespace
}  // namespace kelp_test
