#include "tests/reference/job/setup.h"

#include <cstdlib>
#include <cstring>

#include "tests/reference/job/log.h"
#include "tests/reference/numeric.h"

namespace reference {

namespace {

bool contains(const char* text, const char* word) {
    return strstr(text, word) != nullptr;
}

int dotsOf(float millimetres) {
    float product = 203.0f * millimetres;
    return truncateToInt(static_cast<double>(product) / 25.4);
}

void setGap(Output& output, float gap, const char* paperType) {
    if (contains(paperType, "Normal"))
        logLine(0, "Skip the GAP cmd by Normal paper type");
    else if (contains(paperType, "Continue") || static_cast<double>(gap) <= 1e-6)
        output.format("^MNN\r\n");
    else if (contains(paperType, "LabelGaps"))
        output.format("^MNY\r\n");
    else if (contains(paperType, "LabelMark"))
        output.format("^MNM\r\n");
    else
        logLine(0, "Unknown paper type: %s!", paperType);
}

void setSpeedAndDensity(Output& output, const char* speed, int darkness) {
    if (!contains(speed, "Normal") && atof(speed) > 1e-15)
        output.format("^PR%s\r\n", speed);
    if (0 <= darkness && darkness <= 30)
        output.format("~SD%d\r\n", darkness);
}

void setRibbon(Output& output, const char* mediaMethod) {
    if (contains(mediaMethod, "Direct"))
        output.format("^MTD\r\n");
    else if (contains(mediaMethod, "Transfer"))
        output.format("^MTT\r\n");
}

void setPostAction(Output& output, const char* postAction) {
    if (contains(postAction, "Normal") || contains(postAction, "None"))
        return;
    if (contains(postAction, "TearOff"))
        output.format("^MMT,N\r\n");
    else if (contains(postAction, "PeelOff"))
        output.format("^MMP,N\r\n");
    else if (contains(postAction, "Cut") || contains(postAction, "PartialCut"))
        output.format("^MMC,N\r\n");
}

}  // namespace

void jobSetup(Output& output, const Settings& settings) {
    output.format("SIZE %.1f mm, %.1f mm\r\n", static_cast<double>(settings.pageWidth),
                  static_cast<double>(settings.pageHeight));
    output.format("^XX\r\n");
    output.format("^PW%d\r\n^LL%d\r\n", dotsOf(settings.pageWidth), dotsOf(settings.pageHeight));
    setGap(output, static_cast<float>(settings.GapsHeight), settings.PaperType);
    output.format("^PO%c\r\n", contains(settings.Origin, "Rotation180") ? 'I' : 'N');
    setSpeedAndDensity(output, settings.PrintSpeed, settings.Darkness);
    setRibbon(output, settings.MediaMethod);
    setPostAction(output, settings.PostAction);
    output.format("^XZ\r\n\r\n");
}

}  // namespace reference
