#include "tests/support/generous_ppd.h"

namespace kelp_test {

const std::vector<OptionChoices>& generous_options() {
    static const std::vector<OptionChoices> options{
        {"Resolution", {"203dpi", "300dpi"}},
        {"MediaMethod", {"Direct", "Transfer", "DirectTransfer", "Other"}},
        {"PaperType", {"LabelGaps", "LabelMark", "Continue", "Normal", "MarkNormal", "Other"}},
        {"GapsHeight", {"0", "2", "-1", "0.7", "30", "none"}},
        {"PostAction", {"None", "Normal", "TearOff", "PeelOff", "Cut", "PartialCut", "Other"}},
        {"Occurrence", {"EveryPage", "EndOfJob"}},
        {"Origin", {"Normal", "Rotation180", "Rotation90"}},
        {"HalftoneType",
         {"None", "FloydSteinberg", "Ordered", "Burkes", "Stucki", "JarvisJudiceNinke", "Sierra",
          "StevensonArce", "Tattoo", "Tattoo_X8", "Other"}},
        {"MirrorImage",
         {"false", "true", "yes", "no", "0", "1", "255", "256", "-1", "TRUE", "maybe"}},
        {"NegativeImage", {"false", "true", "no", "Yes", "0", "1", "256", "257", "x"}},
        {"PrintSpeed", {"4", "2.5", "0", "Normal", "12", "-1", "1e-20", "fast", "3ips"}},
        {"Darkness", {"15", "0", "30", "31", "-1", "7.9", "dark"}},
        {"Brightness",
         {"0",    "1",     "-1",         "7",           "-13",         "20",    "-20",
          "25",   "26",    "50",         "-60",         "100",         "101",   "-100",
          "-101", "99999", "2147483647", "-2147483648", "99999999999", "bright"}},
        {"ForceRotation", {"0", "1", "90"}},
        {"RecordPrinterCommands", {"0", "1", "-1", "2"}}};
    return options;
}

const Ppd& generous_ppd() {
    static const Ppd ppd = [] {
        Ppd made = bare_ppd();
        made.page_size("A4", "595", "842").page_size("Small", "36.5", "17.25");
        made.custom_page_size();
        for (const OptionChoices& option : generous_options()) {
            made.option(option.name, option.choices);
        }
        return made.attribute("kelpFilterOutputFile", "rec");
    }();
    return ppd;
}

}  // namespace kelp_test
