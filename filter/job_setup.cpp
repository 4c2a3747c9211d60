#include "filter/job_setup.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "filter/log.h"
#include "filter/units.h"
#include "printer/kelp_printer.h"

const char* const ZPL2PrintMethod[3] = {"", "^MTD\r\n", "^MTT\r\n"};
const char* const ZPL2MN[3] = {"^MNY\r\n", "^MNM\r\n", "^MNN\r\n"};
const char* const ZPL2MM[5] = {"", "^MMT,N\r\n", "^MMP,N\r\n", "^MMC,N\r\n", "^MMC,N\r\n"};

namespace {

constexpr float kDotsPerInch = 203.0F;

bool contains(const char* text, const char* word) {
    return std::strstr(text, word) != nullptr;
}

/// Truncated. A label too long for an int saturates, a not-a-number has no dots.
int dotsOf(float millimetres) {
    using Limits = std::numeric_limits<int>;
    const double dots = static_cast<double>(kDotsPerInch * millimetres) / kMillimetresPerInch;
    if (std::isnan(dots)) {
        return 0;
    }
    return static_cast<int>(std::clamp<double>(dots, Limits::min(), Limits::max()));
}

void send(const char* command) {
    sPrinter->printFormat("%s", command);
}

}  // namespace

void jobSetup(const Settings& settings) {
    TSPLSize(settings.pageWidth, settings.pageHeight);
    ZPLStart();
    setSize(settings.pageWidth, settings.pageHeight);
    setGap(static_cast<float>(settings.GapsHeight), 0.0F, settings.PaperType);
    setReference();
    setDirection(settings.Origin, settings.MirrorImage);
    setSpeedAndDensity(settings.PrintSpeed, settings.Darkness);
    setRibbon(settings.MediaMethod);
    setOffset(0.0F);
    setPostAction(settings.PostAction);
    ZPLEnd();
}

void TSPLSize(float width, float height) {
    sPrinter->printFormat("SIZE %.1f mm, %.1f mm\r\n", static_cast<double>(width),
                          static_cast<double>(height));
}

void ZPLStart() {
    send("^XX\r\n");
}

void setSize(float width, float height) {
    sPrinter->printFormat("^PW%d\r\n^LL%d\r\n", dotsOf(width), dotsOf(height));
}

void setGap(float gap, float /*offset*/, const char* paperType) {
    if (contains(paperType, "Normal")) {
        kelpLogCommon(0, "Skip the GAP cmd by Normal paper type");
    } else if (contains(paperType, "Continue") || static_cast<double>(gap) <= 1e-6) {
        send(ZPL2MN[2]);
    } else if (contains(paperType, "LabelGaps")) {
        send(ZPL2MN[0]);
    } else if (contains(paperType, "LabelMark")) {
        send(ZPL2MN[1]);
    } else {
        kelpLogCommon(0, "Unknown paper type: %s!", paperType);
    }
}

void setReference() {}

void setDirection(const char* origin, int /*mirror*/) {
    sPrinter->printFormat("^PO%c\r\n", contains(origin, "Rotation180") ? 'I' : 'N');
}

void setSpeedAndDensity(const char* printSpeed, int darkness) {
    // NOLINTNEXTLINE(cert-err34-c): a text that is no number is not above 0
    if (!contains(printSpeed, "Normal") && std::atof(printSpeed) > 1e-15) {
        sPrinter->printFormat("^PR%s\r\n", printSpeed);
    }
    if (darkness >= 0 && darkness <= 30) {
        sPrinter->printFormat("~SD%d\r\n", darkness);
    }
}

void setRibbon(const char* mediaMethod) {
    if (contains(mediaMethod, "Direct")) {
        send(ZPL2PrintMethod[1]);
    } else if (contains(mediaMethod, "Transfer")) {
        send(ZPL2PrintMethod[2]);
    }
}

void setOffset(float /*offset*/) {}

void setPostAction(const char* postAction) {
    if (contains(postAction, "Normal") || contains(postAction, "None")) {
        return;
    }
    if (contains(postAction, "TearOff")) {
        send(ZPL2MM[1]);
    } else if (contains(postAction, "PeelOff")) {
        send(ZPL2MM[2]);
    } else if (contains(postAction, "Cut") || contains(postAction, "PartialCut")) {
        send(ZPL2MM[3]);
    }
}

void ZPLEnd() {
    send("^XZ\r\n\r\n");
}

void setCls() {}

void endPage() {
    send("\r\n");
}
