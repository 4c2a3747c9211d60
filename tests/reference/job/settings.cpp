#include "tests/reference/job/settings.h"

#include <cups/cups.h>
#include <cups/ppd.h>
#include <strings.h>

#include <cstdio>
#include <cstdlib>

#include "tests/reference/job/log.h"

namespace reference {

namespace {

const char* choiceOf(ppd_file_t* ppd, const char* option) {
    ppd_choice_t* choice = ppdFindMarkedChoice(ppd, option);
    if (choice == nullptr) {
        ppd_option_t* found = ppdFindOption(ppd, option);
        if (found == nullptr)
            return nullptr;
        choice = ppdFindChoice(found, found->defchoice);
    }
    if (choice == nullptr)
        return nullptr;
    return choice->choice;
}

const char* choiceText(ppd_file_t* ppd, const char* option, const char* fallback) {
    const char* choice = choiceOf(ppd, option);
    return choice != nullptr ? choice : fallback;
}

int choiceInt(ppd_file_t* ppd, const char* option, int fallback) {
    const char* choice = choiceOf(ppd, option);
    return choice != nullptr ? atoi(choice) : fallback;
}

// The boolean is an 8-bit value, sign-extended where it is stored.
int choiceBool(ppd_file_t* ppd, const char* option, bool fallback) {
    const char* choice = choiceOf(ppd, option);
    if (choice == nullptr)
        return fallback ? 1 : 0;
    if (strcasecmp(choice, "true") == 0 || strcasecmp(choice, "yes") == 0)
        return 1;
    if (strcasecmp(choice, "false") == 0 || strcasecmp(choice, "no") == 0)
        return 0;
    int low = atoi(choice) & 255;
    return low >= 128 ? low - 256 : low;
}

const char* attributeText(ppd_file_t* ppd, const char* name, const char* fallback) {
    ppd_attr_t* attribute = ppdFindAttr(ppd, name, nullptr);
    if (attribute == nullptr || attribute->value == nullptr)
        return fallback;
    return attribute->value;
}

void readPageSize(ppd_file_t* ppd, Settings& settings) {
    settings.pageWidth = 0.0f;
    settings.pageHeight = 0.0f;
    const char* name = choiceText(ppd, "PageSize", "");
    logLine(0, "PageSizeName: %s", name);
    ppd_size_t* size = ppdPageSize(ppd, name);
    if (size == nullptr)
        return;
    logLine(0, "Custom Size: (%f,%f,%f,%f,%f,%f)", static_cast<double>(size->width),
            static_cast<double>(size->length), static_cast<double>(size->left),
            static_cast<double>(size->bottom), static_cast<double>(size->right),
            static_cast<double>(size->top));
    settings.pageWidth = static_cast<float>(static_cast<double>(size->width) * 0.3528);
    settings.pageHeight = static_cast<float>(static_cast<double>(size->length) * 0.3528);
    logLine(0, "Set page size: width %f mm, height %f mm", static_cast<double>(settings.pageWidth),
            static_cast<double>(settings.pageHeight));
}

void logSettings(const Settings& settings) {
    logLine(0, "settings->Resolution:%s", settings.Resolution);
    logLine(0, "settings->MediaMethod:%s", settings.MediaMethod);
    logLine(0, "settings->PaperType:%s", settings.PaperType);
    logLine(0, "settings->GapsHeight:%d", settings.GapsHeight);
    logLine(0, "settings->PostAction:%s", settings.PostAction);
    logLine(0, "settings->Occurrence:%s", settings.Occurrence);
    logLine(0, "settings->Origin:%s", settings.Origin);
    logLine(0, "settings->MirrorImage:%d", settings.MirrorImage);
    logLine(0, "settings->NegativeImage:%d", settings.NegativeImage);
    logLine(0, "settings->PrintSpeed:%s", settings.PrintSpeed);
    logLine(0, "settings->Darkness:%d", settings.Darkness);
    logLine(0, "settings->halftoneType:%d", settings.halftoneType);
    logLine(0, "settings->DirectBuffer:%d", settings.DirectBuffer);
    logLine(0, "settings->StoredGraphics:%d", settings.StoredGraphics);
    logLine(0, "settings->OptionDisplayUnit:%d", settings.OptionDisplayUnit);
    logLine(0, "settings->PageSize:%s", settings.PageSize);
    logLine(0, "settings->pageWidth:%f", static_cast<double>(settings.pageWidth));
    logLine(0, "settings->pageHeight:%f", static_cast<double>(settings.pageHeight));
}

}  // namespace

std::string recordingName(const char* base, const struct tm& local) {
    char stamp[128];
    snprintf(stamp, sizeof(stamp), "-%d%02d%02d%02d%02d%02d.bin", local.tm_year + 1900,
             local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return std::string(base) + stamp;
}

void parseSettings(Settings& settings, const char* options) {
    ppd_file_t* ppd = ppdOpenFile(getenv("PPD"));
    ppdMarkDefaults(ppd);
    cups_option_t* parsed = nullptr;
    int count = cupsParseOptions(options, 0, &parsed);
    if (count > 0) {
        cupsMarkOptions(ppd, count, parsed);
        cupsFreeOptions(count, parsed);
    }

    settings = Settings{};
    copyText(settings.PageSize, choiceText(ppd, "PageSize", ""), 41);
    copyText(settings.Resolution, choiceText(ppd, "Resolution", ""), 41);
    copyText(settings.MediaMethod, choiceText(ppd, "MediaMethod", ""), 41);
    copyText(settings.PaperType, choiceText(ppd, "PaperType", ""), 41);
    settings.GapsHeight = choiceInt(ppd, "GapsHeight", 0);
    copyText(settings.PostAction, choiceText(ppd, "PostAction", ""), 41);
    copyText(settings.Occurrence, choiceText(ppd, "Occurrence", ""), 41);
    copyText(settings.Origin, choiceText(ppd, "Origin", ""), 41);
    settings.halftoneType = halftoneFromName(choiceText(ppd, "HalftoneType", ""));
    settings.MirrorImage = choiceBool(ppd, "MirrorImage", false);
    settings.NegativeImage = choiceBool(ppd, "NegativeImage", false);
    copyText(settings.PrintSpeed, choiceText(ppd, "PrintSpeed", ""), 41);
    settings.Darkness = choiceInt(ppd, "Darkness", 0);
    settings.Brightness = choiceInt(ppd, "Brightness", 0);
    settings.DirectBuffer = 0;
    settings.StoredGraphics = 0;
    settings.OptionDisplayUnit = 0;
    readPageSize(ppd, settings);
    settings.ForceRotation = choiceInt(ppd, "ForceRotation", 0);

    if (choiceInt(ppd, "RecordPrinterCommands", 0) > 0) {
        const char* base = attributeText(ppd, "kelpFilterOutputFile", "");
        time_t now = time(nullptr);
        std::string name = recordingName(base, *localtime(&now));
        copyText(settings.OutputFile, name.c_str(), sizeof(settings.OutputFile));
    }
    logSettings(settings);
    ppdClose(ppd);
}

}  // namespace reference
