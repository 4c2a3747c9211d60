#include "filter/settings.h"

#include <cups/cups.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>

#include "filter/log.h"
#include "filter/ppd_lookup.h"
#include "filter/text.h"

namespace {

constexpr double kMillimetresPerPoint = 0.3528;

struct ClosePpd {
    void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};
using OwnedPpd = std::unique_ptr<ppd_file_t, ClosePpd>;

OwnedPpd openMarkedPpd(const char* jobOptions) {
    OwnedPpd ppd(ppdOpenFile(std::getenv("PPD")));
    ppdMarkDefaults(ppd.get());
    cups_option_t* options = nullptr;
    const int count = cupsParseOptions(jobOptions, 0, &options);
    if (count > 0) {
        cupsMarkOptions(ppd.get(), count, options);
        cupsFreeOptions(count, options);
    }
    return ppd;
}

template <std::size_t Size>
void readText(ppd_file_t* ppd, const char* option, char (&field)[Size]) {
    kelpStrCpy(field, kelpPpdGetChoiceAsStrDefault(ppd, option, ""), Size);
}

/// The base from the PPD, the local time behind it; cut to the field.
void nameRecording(ppd_file_t* ppd, Settings& settings) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    std::snprintf(settings.OutputFile, sizeof settings.OutputFile, "%s-%d%02d%02d%02d%02d%02d.bin",
                  kelpPpdGetAttrAsStrDefault(ppd, "kelpFilterOutputFile", nullptr, ""),
                  local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                  local.tm_min, local.tm_sec);
}

void logSettings(const Settings& settings) {
    kelpLogCommon(0, "settings->Resolution:%s", settings.Resolution);
    kelpLogCommon(0, "settings->MediaMethod:%s", settings.MediaMethod);
    kelpLogCommon(0, "settings->PaperType:%s", settings.PaperType);
    kelpLogCommon(0, "settings->GapsHeight:%d", settings.GapsHeight);
    kelpLogCommon(0, "settings->PostAction:%s", settings.PostAction);
    kelpLogCommon(0, "settings->Occurrence:%s", settings.Occurrence);
    kelpLogCommon(0, "settings->Origin:%s", settings.Origin);
    kelpLogCommon(0, "settings->MirrorImage:%d", settings.MirrorImage);
    kelpLogCommon(0, "settings->NegativeImage:%d", settings.NegativeImage);
    kelpLogCommon(0, "settings->PrintSpeed:%s", settings.PrintSpeed);
    kelpLogCommon(0, "settings->Darkness:%d", settings.Darkness);
    kelpLogCommon(0, "settings->halftoneType:%d", static_cast<int>(settings.halftoneType));
    kelpLogCommon(0, "settings->DirectBuffer:%d", settings.DirectBuffer);
    kelpLogCommon(0, "settings->StoredGraphics:%d", settings.StoredGraphics);
    kelpLogCommon(0, "settings->OptionDisplayUnit:%d", settings.OptionDisplayUnit);
    kelpLogCommon(0, "settings->PageSize:%s", settings.PageSize);
    kelpLogCommon(0, "settings->pageWidth:%f", static_cast<double>(settings.pageWidth));
    kelpLogCommon(0, "settings->pageHeight:%f", static_cast<double>(settings.pageHeight));
}

}  // namespace

void parseSettings(Settings& settings, const char* options) {
    const OwnedPpd owned = openMarkedPpd(options);
    ppd_file_t* ppd = owned.get();

    settings = {};
    readText(ppd, "PageSize", settings.PageSize);
    readText(ppd, "Resolution", settings.Resolution);
    readText(ppd, "MediaMethod", settings.MediaMethod);
    readText(ppd, "PaperType", settings.PaperType);
    settings.GapsHeight = kelpPpdGetChoiceAsIntDefault(ppd, "GapsHeight", 0);
    readText(ppd, "PostAction", settings.PostAction);
    readText(ppd, "Occurrence", settings.Occurrence);
    readText(ppd, "Origin", settings.Origin);
    settings.halftoneType =
        kelpHalftoneTypeFromStr(kelpPpdGetChoiceAsStrDefault(ppd, "HalftoneType", ""));
    settings.MirrorImage = kelpPpdGetChoiceAsBoolDefault(ppd, "MirrorImage", false);
    settings.NegativeImage = kelpPpdGetChoiceAsBoolDefault(ppd, "NegativeImage", false);
    readText(ppd, "PrintSpeed", settings.PrintSpeed);
    settings.Darkness = kelpPpdGetChoiceAsIntDefault(ppd, "Darkness", 0);
    settings.Brightness = kelpPpdGetChoiceAsIntDefault(ppd, "Brightness", 0);
    getPageWidthPageHeight(ppd, settings);
    settings.ForceRotation = kelpPpdGetChoiceAsIntDefault(ppd, "ForceRotation", 0);
    if (kelpPpdGetChoiceAsIntDefault(ppd, "RecordPrinterCommands", 0) > 0) {
        nameRecording(ppd, settings);
    }
    logSettings(settings);
}

float kelpPointsToMillimetres(float points) {
    return static_cast<float>(static_cast<double>(points) * kMillimetresPerPoint);
}

void getPageWidthPageHeight(ppd_file_t* ppd, Settings& settings) {
    settings.pageWidth = 0;
    settings.pageHeight = 0;
    // The choice itself: the settings field may hold only its first 40 characters.
    const char* name = kelpPpdGetChoiceAsStrDefault(ppd, "PageSize", "");
    kelpLogCommon(0, "PageSizeName: %s", name);
    const ppd_size_t* size = ppdPageSize(ppd, name);
    if (size == nullptr) {
        return;
    }
    kelpLogCommon(0, "Custom Size: (%f,%f,%f,%f,%f,%f)", static_cast<double>(size->width),
                  static_cast<double>(size->length), static_cast<double>(size->left),
                  static_cast<double>(size->bottom), static_cast<double>(size->right),
                  static_cast<double>(size->top));
    settings.pageWidth = kelpPointsToMillimetres(size->width);
    settings.pageHeight = kelpPointsToMillimetres(size->length);
    kelpLogCommon(0, "Set page size: width %f mm, height %f mm",
                  static_cast<double>(settings.pageWidth),
                  static_cast<double>(settings.pageHeight));
}
