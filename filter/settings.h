#ifndef KELP_FILTER_SETTINGS_H
#define KELP_FILTER_SETTINGS_H

#include <cups/ppd.h>

#include "filter/halftone_type.h"

/// The settings of a job, named as their options are. Texts are cut to what their field holds.
struct Settings {
    char PageSize[41];
    float pageWidth;   ///< millimetres; from the PPD, then from each page's raster header
    float pageHeight;  ///< likewise
    char Resolution[41];
    char MediaMethod[41];
    char PaperType[41];
    int GapsHeight;
    char PostAction[41];
    char Occurrence[41];
    char Origin[41];
    int MirrorImage;    ///< 0 for no, anything else for yes
    int NegativeImage;  ///< likewise
    DitherType halftoneType;
    char PrintSpeed[41];
    int Darkness;
    int Brightness;
    int DirectBuffer;
    int StoredGraphics;
    int OptionDisplayUnit;
    char OutputFile[256];  ///< the recording file; empty for none
    int ForceRotation;     ///< read and not used
};

/// Fills the record from the PPD that the environment variable "PPD" names, with the job's options
/// marked on it, and logs it. Without a readable PPD every field keeps its default and the page
/// size is 0 by 0.
/// @param options as the spooler passes them: "name=value name=value ..."
void parseSettings(Settings& settings, const char* options);

/// A length in points in millimetres, as the page size's.
float kelpPointsToMillimetres(float points);

/// Reads the size of the chosen page, in millimetres; 0 by 0 where the PPD does not know it.
void getPageWidthPageHeight(ppd_file_t* ppd, Settings& settings);

#endif
