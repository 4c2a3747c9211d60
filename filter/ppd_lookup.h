#ifndef KELP_FILTER_PPD_LOOKUP_H
#define KELP_FILTER_PPD_LOOKUP_H

#include <cups/ppd.h>

#include <cstdint>

// What a printer description says, with the job's options marked on it. Every look-up accepts a
// null description and then gives its default. Texts belong to the description, or are the default.

/// What a choice's name means where an option is switched on or off: 1 for "true" and "yes", 0 for
/// "false" and "no", in any case; any other name as a number, cut to its low 8 bits, so that "255"
/// is -1 and "256" is 0.
std::int8_t kelpChoiceToBool(const char* name);

/// The marked choice of an option, or its default choice; null where the option does not exist.
const ppd_choice_t* kelpPpdGetChoice(ppd_file_t* ppd, const char* option);

/// The choice's name.
const char* kelpPpdGetChoiceAsStrDefault(ppd_file_t* ppd, const char* option,
                                         const char* defaultValue);

/// The number that the choice's name begins with (kelpTextToInt).
int kelpPpdGetChoiceAsIntDefault(ppd_file_t* ppd, const char* option, int defaultValue);

/// The choice's name as kelpChoiceToBool reads it.
std::int8_t kelpPpdGetChoiceAsBoolDefault(ppd_file_t* ppd, const char* option, bool defaultValue);

/// The value of an attribute; `spec` narrows it to one of several, null takes the first.
const char* kelpPpdGetAttrAsStrDefault(ppd_file_t* ppd, const char* name, const char* spec,
                                       const char* defaultValue);

/// The value of an attribute as atof reads it.
double kelpPpdGetAttrAsFloatDefault(ppd_file_t* ppd, const char* name, const char* spec,
                                    double defaultValue);

#endif
