#pragma once

#include <ctime>
#include <string>

namespace reference {

struct Settings {
    char PageSize[41];
    float pageWidth;
    float pageHeight;
    char Resolution[41];
    char MediaMethod[41];
    char PaperType[41];
    int GapsHeight;
    char PostAction[41];
    char Occurrence[41];
    char Origin[41];
    int MirrorImage;
    int NegativeImage;
    int halftoneType;
    char PrintSpeed[41];
    int Darkness;
    int Brightness;
    int DirectBuffer;
    int StoredGraphics;
    int OptionDisplayUnit;
    char OutputFile[256];
    int ForceRotation;
};

// The name of the recording file for a base and a local time.
std::string recordingName(const char* base, const struct tm& local);

void parseSettings(Settings& settings, const char* options);

}  // namespace reference
