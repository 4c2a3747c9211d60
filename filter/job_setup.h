#ifndef KELP_FILTER_JOB_SETUP_H
#define KELP_FILTER_JOB_SETUP_H

#include "filter/settings.h"

// The commands that set the printer up before every page. Each prints through sPrinter, which must
// be set, and thus to every output stream. Choice texts are searched for words: a choice that only
// contains one matches, and the first word that matches decides. Unknown texts send nothing.

// The commands themselves, by fixed positions. The empty first texts and the repeated last one are
// never sent.
extern const char* const ZPL2PrintMethod[3];  ///< none, direct, transfer
extern const char* const ZPL2MN[3];           ///< gaps, marks, continuous
extern const char* const ZPL2MM[5];           ///< none, tear off, peel off, cut, cut

/// The whole block: size line, label start, the emitters below in order, label end.
void jobSetup(const Settings& settings);

/// Size in millimetres, for the printer's other command language; stands before the block.
void TSPLSize(float width, float height);
/// Opens the block with "^XX", which starts no label in ZPL; printers of this kind expect it.
void ZPLStart();
/// Label width and length in dots, at 203 dots per inch whatever the raster's resolution is.
/// Arguments in millimetres.
void setSize(float width, float height);
/// Media sensing: "Normal" leaves the printer's own; "Continue", or any paper with a gap of 0, is
/// continuous; "LabelGaps" and "LabelMark" sense gaps and marks. The gap is only compared with 0,
/// the offset has no effect.
void setGap(float gap, float offset, const char* paperType);
/// Sends nothing.
void setReference();
/// Print orientation: inverted for "Rotation180", else normal. Mirroring is done on the image: the
/// flag has no effect.
void setDirection(const char* origin, int mirror);
/// Speed, sent as the text itself, unless it is "Normal" or not above 0; darkness, sent when it is
/// 0 to 30.
void setSpeedAndDensity(const char* printSpeed, int darkness);
/// Print method: "Direct" thermal or thermal "Transfer".
void setRibbon(const char* mediaMethod);
/// Sends nothing.
void setOffset(float offset);
/// What follows a label: "TearOff", "PeelOff", "Cut" or "PartialCut"; "Normal" and "None" leave
/// the printer's own.
void setPostAction(const char* postAction);
/// Closes the block.
void ZPLEnd();
/// Sends nothing.
void setCls();
/// An empty line; the filter does not call it.
void endPage();

#endif
