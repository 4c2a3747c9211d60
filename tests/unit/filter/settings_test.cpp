#include "filter/settings.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/filter/settings_job.h"

namespace kelp_test {
namespace {

class ReadSettings : public testing::Test {
  protected:
    SettingsJob job;
};

Ppd full_ppd() {
    return bare_ppd()
        .page_size("w144h72", "144", "72")
        .option("Resolution", {"203dpi", "300dpi"})
        .option("MediaMethod", {"Direct", "Transfer"})
        .option("PaperType", {"LabelGaps", "LabelMark", "Continue", "Normal"})
        .option("GapsHeight", {"3", "0", "12"})
        .option("PostAction", {"TearOff", "Cut"})
        .option("Occurrence", {"EndOfJob", "EveryPage"})
        .option("Origin", {"Rotation0", "Rotation180"})
        .option("HalftoneType", {"Stucki", "None", "Tattoo", "Tattoo_X8", "Unheard", "tattoo"})
        .option("MirrorImage", {"False", "True", "YES", "no", "abc", "255", "256", "2"})
        .option("NegativeImage", {"True", "False", "255", "256"})
        .option("PrintSpeed", {"4", "6", "Normal"})
        .option("Darkness", {"15", "30", "-1"})
        .option("Brightness", {"-7", "0", "20"})
        .option("ForceRotation", {"1", "2"});
}

TEST_F(ReadSettings, WithoutADescriptionEveryFieldHasItsDefault) {
    const Settings& settings = job.read("PageSize=w144h72 Darkness=30 MirrorImage=True");
    const Settings defaults{};
    EXPECT_STREQ(settings.PageSize, "");
    EXPECT_EQ(settings.pageWidth, 0.0F);
    EXPECT_EQ(settings.pageHeight, 0.0F);
    EXPECT_STREQ(settings.Resolution, "");
    EXPECT_STREQ(settings.MediaMethod, "");
    EXPECT_STREQ(settings.PaperType, "");
    EXPECT_EQ(settings.GapsHeight, 0);
    EXPECT_STREQ(settings.PostAction, "");
    EXPECT_STREQ(settings.Occurrence, "");
    EXPECT_STREQ(settings.Origin, "");
    EXPECT_EQ(settings.MirrorImage, 0);
    EXPECT_EQ(settings.NegativeImage, 0);
    EXPECT_EQ(settings.halftoneType, DitherNone);
    EXPECT_STREQ(settings.PrintSpeed, "");
    EXPECT_EQ(settings.Darkness, 0);
    EXPECT_EQ(settings.Brightness, 0);
    EXPECT_EQ(settings.DirectBuffer, 0);
    EXPECT_EQ(settings.StoredGraphics, 0);
    EXPECT_EQ(settings.OptionDisplayUnit, 0);
    EXPECT_STREQ(settings.OutputFile, "");
    EXPECT_EQ(settings.ForceRotation, 0);
    EXPECT_EQ(std::memcmp(settings.OutputFile, defaults.OutputFile, sizeof defaults.OutputFile), 0)
        << "the whole field";
}

TEST_F(ReadSettings, FieldsHaveTheirSizes) {
    const Settings settings{};
    EXPECT_EQ(sizeof settings.PageSize, 41U);
    EXPECT_EQ(sizeof settings.Resolution, 41U);
    EXPECT_EQ(sizeof settings.MediaMethod, 41U);
    EXPECT_EQ(sizeof settings.PaperType, 41U);
    EXPECT_EQ(sizeof settings.PostAction, 41U);
    EXPECT_EQ(sizeof settings.Occurrence, 41U);
    EXPECT_EQ(sizeof settings.Origin, 41U);
    EXPECT_EQ(sizeof settings.PrintSpeed, 41U);
    EXPECT_EQ(sizeof settings.OutputFile, 256U);
}

TEST_F(ReadSettings, FilesThatAreNoDescriptionAreAsGoodAsNone) {
    for (const char* path : {"/nonexistent/printer.ppd", "/", "/dev/null", "/proc/self/exe", ""}) {
        SettingsJob::use_path(path);
        const Settings& settings = job.read("Darkness=30");
        EXPECT_STREQ(settings.PageSize, "") << path;
        EXPECT_EQ(settings.Darkness, 0) << path;
        EXPECT_EQ(settings.pageWidth, 0.0F) << path;
    }
}

TEST_F(ReadSettings, WithoutOptionsTheDescriptionsDefaultsAreTaken) {
    job.use(full_ppd());
    const Settings& settings = job.read("");
    EXPECT_STREQ(settings.PageSize, "w288h432");
    EXPECT_STREQ(settings.Resolution, "203dpi");
    EXPECT_STREQ(settings.MediaMethod, "Direct");
    EXPECT_STREQ(settings.PaperType, "LabelGaps");
    EXPECT_EQ(settings.GapsHeight, 3);
    EXPECT_STREQ(settings.PostAction, "TearOff");
    EXPECT_STREQ(settings.Occurrence, "EndOfJob");
    EXPECT_STREQ(settings.Origin, "Rotation0");
    EXPECT_EQ(settings.halftoneType, DitherStucki);
    EXPECT_EQ(settings.MirrorImage, 0);
    EXPECT_EQ(settings.NegativeImage, 1);
    EXPECT_STREQ(settings.PrintSpeed, "4");
    EXPECT_EQ(settings.Darkness, 15);
    EXPECT_EQ(settings.Brightness, -7);
    EXPECT_EQ(settings.ForceRotation, 1);
}

TEST_F(ReadSettings, TheJobsOptionsGoFirst) {
    job.use(full_ppd());
    const Settings& settings = job.read(
        "PageSize=w144h72 Resolution=300dpi MediaMethod=Transfer PaperType=LabelMark GapsHeight=12 "
        "PostAction=Cut Occurrence=EveryPage Origin=Rotation180 HalftoneType=Tattoo "
        "MirrorImage=True NegativeImage=False PrintSpeed=6 Darkness=30 Brightness=20 "
        "ForceRotation=2");
    EXPECT_STREQ(settings.PageSize, "w144h72");
    EXPECT_STREQ(settings.Resolution, "300dpi");
    EXPECT_STREQ(settings.MediaMethod, "Transfer");
    EXPECT_STREQ(settings.PaperType, "LabelMark");
    EXPECT_EQ(settings.GapsHeight, 12);
    EXPECT_STREQ(settings.PostAction, "Cut");
    EXPECT_STREQ(settings.Occurrence, "EveryPage");
    EXPECT_STREQ(settings.Origin, "Rotation180");
    EXPECT_EQ(settings.halftoneType, DitherTattoo);
    EXPECT_EQ(settings.MirrorImage, 1);
    EXPECT_EQ(settings.NegativeImage, 0);
    EXPECT_STREQ(settings.PrintSpeed, "6");
    EXPECT_EQ(settings.Darkness, 30);
    EXPECT_EQ(settings.Brightness, 20);
    EXPECT_EQ(settings.ForceRotation, 2);
    EXPECT_EQ(settings.DirectBuffer, 0);
    EXPECT_EQ(settings.StoredGraphics, 0);
    EXPECT_EQ(settings.OptionDisplayUnit, 0);
}

TEST_F(ReadSettings, UnknownOptionsAndChoicesChangeNothing) {
    job.use(full_ppd());
    const Settings& settings = job.read("Unheard=1 Darkness=77 PaperType=Marble DirectBuffer=1");
    EXPECT_EQ(settings.Darkness, 15);
    EXPECT_STREQ(settings.PaperType, "LabelGaps");
    EXPECT_EQ(settings.DirectBuffer, 0);
}

TEST_F(ReadSettings, AChoiceOfFortyCharactersIsKeptWhole) {
    const std::string forty = "abcdefghijklmnopqrstuvwxyz0123456789ABCD";
    job.use(
        bare_ppd().option("PostAction", {forty, "Cut"}).option("Origin", {"x" + forty.substr(1)}));
    const Settings& settings = job.read("");
    EXPECT_EQ(settings.PostAction, forty);
    EXPECT_EQ(settings.Origin, "x" + forty.substr(1));
}

TEST_F(ReadSettings, HalftonesAreReadByName) {
    job.use(full_ppd());
    EXPECT_EQ(job.read("HalftoneType=Tattoo").halftoneType, DitherTattoo);
    EXPECT_EQ(job.read("HalftoneType=Tattoo_X8").halftoneType, DitherTattooX8);
    EXPECT_EQ(job.read("HalftoneType=None").halftoneType, DitherNone);
    EXPECT_EQ(job.read("HalftoneType=Unheard").halftoneType, DitherNone);
}

TEST_F(ReadSettings, AMirrorImageIsAWordOrTheLowEightBitsOfANumber) {
    job.use(full_ppd());
    EXPECT_EQ(job.read("MirrorImage=True").MirrorImage, 1);
    EXPECT_EQ(job.read("MirrorImage=YES").MirrorImage, 1);
    EXPECT_EQ(job.read("MirrorImage=no").MirrorImage, 0);
    EXPECT_EQ(job.read("MirrorImage=abc").MirrorImage, 0);
    EXPECT_EQ(job.read("MirrorImage=2").MirrorImage, 2);
    EXPECT_EQ(job.read("MirrorImage=255").MirrorImage, -1);
    EXPECT_TRUE(job.logged("settings->MirrorImage:-1"));
    EXPECT_EQ(job.read("MirrorImage=256").MirrorImage, 0);
    EXPECT_TRUE(job.logged("settings->MirrorImage:0"));
    EXPECT_EQ(job.read("NegativeImage=255").NegativeImage, -1);
    EXPECT_TRUE(job.logged("settings->NegativeImage:-1"));
    EXPECT_EQ(job.read("NegativeImage=256").NegativeImage, 0);
}

TEST_F(ReadSettings, AreLoggedInOrder) {
    job.use(full_ppd());
    job.read("MirrorImage=True HalftoneType=Tattoo_X8 Brightness=20");
    // 288 and 432 points: 101.6064 and 152.4096 mm, the latter 152.409607 as a float
    EXPECT_EQ(job.log,
              "DEBUG:PageSizeName: w288h432\n"
              "DEBUG:Custom Size: (288.000000,432.000000,0.000000,0.000000,288.000000,432.000000)\n"
              "DEBUG:Set page size: width 101.606400 mm, height 152.409607 mm\n"
              "DEBUG:settings->Resolution:203dpi\n"
              "DEBUG:settings->MediaMethod:Direct\n"
              "DEBUG:settings->PaperType:LabelGaps\n"
              "DEBUG:settings->GapsHeight:3\n"
              "DEBUG:settings->PostAction:TearOff\n"
              "DEBUG:settings->Occurrence:EndOfJob\n"
              "DEBUG:settings->Origin:Rotation0\n"
              "DEBUG:settings->MirrorImage:1\n"
              "DEBUG:settings->NegativeImage:1\n"
              "DEBUG:settings->PrintSpeed:4\n"
              "DEBUG:settings->Darkness:15\n"
              "DEBUG:settings->halftoneType:9\n"
              "DEBUG:settings->DirectBuffer:0\n"
              "DEBUG:settings->StoredGraphics:0\n"
              "DEBUG:settings->OptionDisplayUnit:0\n"
              "DEBUG:settings->PageSize:w288h432\n"
              "DEBUG:settings->pageWidth:101.606400\n"
              "DEBUG:settings->pageHeight:152.409607\n");
}

TEST_F(ReadSettings, AreLoggedWithoutADescriptionToo) {
    job.read("");
    EXPECT_EQ(job.log,
              "DEBUG:PageSizeName: \n"
              "DEBUG:settings->Resolution:\n"
              "DEBUG:settings->MediaMethod:\n"
              "DEBUG:settings->PaperType:\n"
              "DEBUG:settings->GapsHeight:0\n"
              "DEBUG:settings->PostAction:\n"
              "DEBUG:settings->Occurrence:\n"
              "DEBUG:settings->Origin:\n"
              "DEBUG:settings->MirrorImage:0\n"
              "DEBUG:settings->NegativeImage:0\n"
              "DEBUG:settings->PrintSpeed:\n"
              "DEBUG:settings->Darkness:0\n"
              "DEBUG:settings->halftoneType:0\n"
              "DEBUG:settings->DirectBuffer:0\n"
              "DEBUG:settings->StoredGraphics:0\n"
              "DEBUG:settings->OptionDisplayUnit:0\n"
              "DEBUG:settings->PageSize:\n"
              "DEBUG:settings->pageWidth:0.000000\n"
              "DEBUG:settings->pageHeight:0.000000\n");
}

}  // namespace
}  // namespace kelp_test
