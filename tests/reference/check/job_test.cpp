#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

#include "tests/reference/job/log.h"
#include "tests/reference/job/process.h"
#include "tests/reference/job/settings.h"
#include "tests/reference/job/setup.h"

namespace reference {

namespace {

std::string setupText(const Settings& settings) {
    FILE* file = tmpfile();
    Output output;
    output.streams = {file};
    jobSetup(output, settings);
    std::string text(static_cast<std::size_t>(ftell(file)), '\0');
    rewind(file);
    const std::size_t got = fread(text.data(), 1, text.size(), file);
    fclose(file);
    text.resize(got);
    return text;
}

Settings plainSettings() {
    Settings settings{};
    settings.pageWidth = 50.0f;
    settings.pageHeight = 30.0f;
    settings.Darkness = -1;
    copyText(settings.PaperType, "Normal", 41);
    return settings;
}

const char* const kPpd =
    "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
    "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n*PCFileName: \"TEST.PPD\"\n"
    "*Manufacturer: \"Test\"\n*Product: \"(Test)\"\n*ModelName: \"Test\"\n"
    "*ShortNickName: \"Test\"\n*NickName: \"Test\"\n*PSVersion: \"(3010.000) 0\"\n"
    "*kelpFilterOutputFile: \"/nowhere/rec\"\n"
    "*OpenUI *PageSize/Size: PickOne\n*DefaultPageSize: w144h72\n"
    "*PageSize w144h72/2 x 1: \"<</PageSize[144 72]>>setpagedevice\"\n"
    "*CloseUI: *PageSize\n"
    "*OpenUI *PageRegion/Size: PickOne\n*DefaultPageRegion: w144h72\n"
    "*PageRegion w144h72/2 x 1: \"<</PageSize[144 72]>>setpagedevice\"\n"
    "*CloseUI: *PageRegion\n"
    "*DefaultImageableArea: w144h72\n*ImageableArea w144h72: \"0 0 144 72\"\n"
    "*DefaultPaperDimension: w144h72\n*PaperDimension w144h72: \"144 72\"\n"
    "*OpenUI *HalftoneType/Halftone: PickOne\n*DefaultHalftoneType: Tattoo\n"
    "*HalftoneType Tattoo/Tattoo: \"\"\n*HalftoneType Other/Other: \"\"\n"
    "*CloseUI: *HalftoneType\n"
    "*OpenUI *MirrorImage/Mirror: PickOne\n*DefaultMirrorImage: 255\n"
    "*MirrorImage 255/A: \"\"\n*MirrorImage 256/B: \"\"\n*MirrorImage YES/C: \"\"\n"
    "*CloseUI: *MirrorImage\n"
    "*OpenUI *RecordPrinterCommands/Record: PickOne\n*DefaultRecordPrinterCommands: 0\n"
    "*RecordPrinterCommands 0/Off: \"\"\n*RecordPrinterCommands 1/On: \"\"\n"
    "*CloseUI: *RecordPrinterCommands\n";

Settings parsed(const char* options) {
    const std::string path = testing::TempDir() + "reference_test.ppd";
    std::ofstream(path) << kPpd;
    setenv("PPD", path.c_str(), 1);
    Settings settings{};
    testing::internal::CaptureStderr();
    parseSettings(settings, options);
    testing::internal::GetCapturedStderr();
    unsetenv("PPD");
    remove(path.c_str());
    return settings;
}

std::vector<unsigned char> processed(Printer& printer, std::vector<unsigned char> page,
                                     int bytesPerLine, int width, int height) {
    std::vector<unsigned char> out(64 + 2 * page.size(), 0);
    testing::internal::CaptureStderr();
    processPage(printer, page.data(), bytesPerLine, width, height, out.data());
    testing::internal::GetCapturedStderr();
    return printer.pimage->value().px;
}

}  // namespace

TEST(ReferenceText, BasenameTakesTheLaterSeparator) {
    EXPECT_STREQ(basenameOf("a/b\\c"), "c");
    EXPECT_STREQ(basenameOf("a\\b/c"), "c");
    EXPECT_STREQ(basenameOf("abc"), "abc");
    EXPECT_STREQ(basenameOf("dir/"), "");
    EXPECT_EQ(basenameOf(nullptr), nullptr);
}

TEST(ReferenceText, CopiesAreCutToTheFieldAndFilledWithZeros) {
    char field[41];
    memset(field, 'x', sizeof(field));
    copyText(field, std::string(45, 'a').c_str(), 41);
    EXPECT_EQ(std::string(field), std::string(40, 'a'));
    copyText(field, "ab", 41);
    EXPECT_EQ(field[40], 0);
    EXPECT_EQ(field[3], 0);
}

TEST(ReferenceText, HalftoneNamesAreExact) {
    EXPECT_EQ(halftoneFromName("Tattoo_X8"), 9);
    EXPECT_EQ(halftoneFromName("JarvisJudiceNinke"), 5);
    EXPECT_EQ(halftoneFromName("tattoo"), 0);
    EXPECT_EQ(halftoneFromName(""), 0);
}

TEST(ReferenceText, ALogLineHasItsPrefixAndItsNewline) {
    testing::internal::CaptureStderr();
    logLine(1, "a %d\n", 1);
    logLine(3, "b");
    logLine(4, "c");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "DEBUG:a 1\n\nERROR:b\nCRIT:c\n");
}

TEST(ReferenceOutput, OnlyRegularFilesAreOpened) {
    const std::string base = testing::TempDir() + "reference_open_" + std::to_string(getpid());
    const std::string target = base + "_target";
    const std::string link = base + "_link";
    const std::string fifo = base + "_fifo";
    const int flags = O_RDWR | O_CREAT | O_TRUNC;
    FILE* file = openRegular(target.c_str(), flags, "wb+");
    ASSERT_NE(file, nullptr);
    fclose(file);
    ASSERT_EQ(symlink(target.c_str(), link.c_str()), 0);
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(openRegular(link.c_str(), flags, "wb+"), nullptr);
    EXPECT_EQ(openRegular(fifo.c_str(), flags, "wb+"), nullptr);
    EXPECT_EQ(openRegular(fifo.c_str(), O_WRONLY | O_CREAT | O_TRUNC, "w"), nullptr);
    EXPECT_EQ(openRegular("/nowhere/file", flags, "wb+"), nullptr);
    remove(target.c_str());
    remove(link.c_str());
    remove(fifo.c_str());
}

TEST(ReferenceSetup, SizesAreTruncatedToDots) {
    EXPECT_EQ(setupText(plainSettings()),
              "SIZE 50.0 mm, 30.0 mm\r\n^XX\r\n^PW399\r\n^LL239\r\n^PON\r\n^XZ\r\n\r\n");
}

TEST(ReferenceSetup, EveryCommandInItsPlace) {
    Settings settings = plainSettings();
    copyText(settings.PaperType, "LabelGaps", 41);
    settings.GapsHeight = 3;
    copyText(settings.Origin, "Rotation180", 41);
    copyText(settings.PrintSpeed, "4", 41);
    settings.Darkness = 30;
    copyText(settings.MediaMethod, "Direct", 41);
    copyText(settings.PostAction, "PartialCut", 41);
    EXPECT_EQ(setupText(settings),
              "SIZE 50.0 mm, 30.0 mm\r\n^XX\r\n^PW399\r\n^LL239\r\n^MNY\r\n^POI\r\n^PR4\r\n"
              "~SD30\r\n^MTD\r\n^MMC,N\r\n^XZ\r\n\r\n");
    settings.GapsHeight = 0;
    EXPECT_NE(setupText(settings).find("^MNN\r\n"), std::string::npos);
    settings.Darkness = 31;
    EXPECT_EQ(setupText(settings).find("~SD"), std::string::npos);
    copyText(settings.PrintSpeed, "0", 41);
    EXPECT_EQ(setupText(settings).find("^PR"), std::string::npos);
    copyText(settings.PrintSpeed, "Normal4", 41);
    EXPECT_EQ(setupText(settings).find("^PR"), std::string::npos);
}

TEST(ReferenceSettings, ChoicesComeFromTheOptionsAndTheDefaults) {
    const Settings defaults = parsed("");
    EXPECT_STREQ(defaults.PageSize, "w144h72");
    EXPECT_EQ(defaults.pageWidth, static_cast<float>(144 * 0.3528));
    EXPECT_EQ(defaults.pageHeight, static_cast<float>(72 * 0.3528));
    EXPECT_EQ(defaults.halftoneType, 8);
    EXPECT_EQ(defaults.MirrorImage, -1);
    EXPECT_EQ(defaults.NegativeImage, 0);
    EXPECT_STREQ(defaults.PaperType, "");
    EXPECT_STREQ(defaults.OutputFile, "");
    const Settings marked = parsed("HalftoneType=Other MirrorImage=256");
    EXPECT_EQ(marked.halftoneType, 0);
    EXPECT_EQ(marked.MirrorImage, 0);
    EXPECT_EQ(parsed("MirrorImage=YES").MirrorImage, 1);
    EXPECT_EQ(strncmp(parsed("RecordPrinterCommands=1").OutputFile, "/nowhere/rec-2", 14), 0);
}

TEST(ReferenceSettings, WithoutAPpdEveryFieldKeepsItsDefault) {
    unsetenv("PPD");
    Settings settings{};
    testing::internal::CaptureStderr();
    parseSettings(settings, "PaperType=LabelGaps GapsHeight=3");
    testing::internal::GetCapturedStderr();
    EXPECT_STREQ(settings.PaperType, "");
    EXPECT_EQ(settings.GapsHeight, 0);
    EXPECT_EQ(settings.pageWidth, 0.0f);
}

TEST(ReferenceSettings, TheRecordingNameCarriesTheTimePadded) {
    struct tm local = {};
    local.tm_year = 124;
    local.tm_mon = 2;
    local.tm_mday = 5;
    local.tm_hour = 7;
    local.tm_min = 8;
    local.tm_sec = 9;
    EXPECT_EQ(recordingName("/tmp/rec", local), "/tmp/rec-20240305070809.bin");
}

TEST(ReferenceProcess, TheHalftoneNumberIsTheMethodNumber) {
    Printer printer;  // 0: threshold
    EXPECT_EQ(processed(printer, {128, 129, 7, 255}, 4, 2, 1),
              (std::vector<unsigned char>{0, 1, 0, 0}));
    printer.halftoneType = 1;  // ordered: 16 is white only at (0, 0)
    EXPECT_EQ(processed(printer, {16, 16, 16, 16}, 4, 4, 1),
              (std::vector<unsigned char>{1, 0, 0, 0}));
}

TEST(ReferenceProcess, NegativeInvertsIndicesAndPadding) {
    Printer printer;
    printer.negativePrint = true;
    EXPECT_EQ(processed(printer, {0, 255}, 2, 2, 1),
              (std::vector<unsigned char>{0xFF, 0xFE, 0xFF, 0xFF}));
}

TEST(ReferenceProcess, BrightnessCountsFiveLevelsAStep) {
    Printer printer;
    printer.brightness = 4;  // adds 20
    EXPECT_EQ(processed(printer, {108, 109}, 2, 2, 1), (std::vector<unsigned char>{0, 1, 0, 0}));
}

TEST(ReferenceProcess, MirroringComesBeforeTheHalftone) {
    Printer printer;
    printer.mirrorPrint = true;
    EXPECT_EQ(processed(printer, {0, 0, 255, 0}, 4, 3, 1),
              (std::vector<unsigned char>{1, 0, 0, 0}));
}

TEST(ReferenceProcess, TheTattooRouteReadsPackedBytesOfALooserBuffer) {
    // Rows two bytes apart, one pixel wide: the chain sees 255 and the zero of the
    // gap. Its threshold is 255, above which nothing lies: both come out black.
    Printer printer;
    printer.halftoneType = 8;
    EXPECT_EQ(processed(printer, {255, 9, 255, 9}, 2, 1, 2),
              (std::vector<unsigned char>{0, 0, 0, 0, 0, 0, 0, 0}));
    // Packed, the same page is uniform and stays white.
    EXPECT_EQ(processed(printer, {255, 255}, 1, 1, 2),
              (std::vector<unsigned char>{255, 0, 0, 0, 255, 0, 0, 0}));
}

}  // namespace reference
