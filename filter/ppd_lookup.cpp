#include "filter/ppd_lookup.h"

#include <strings.h>

#include <cstdlib>

#include "filter/text.h"

std::int8_t kelpChoiceToBool(const char* name) {
    const auto is = [name](const char* word) { return strcasecmp(name, word) == 0; };
    if (is("true") || is("yes")) {
        return 1;
    }
    if (is("false") || is("no")) {
        return 0;
    }
    return static_cast<std::int8_t>(kelpTextToInt(name));
}

const ppd_choice_t* kelpPpdGetChoice(ppd_file_t* ppd, const char* option) {
    if (const ppd_choice_t* marked = ppdFindMarkedChoice(ppd, option)) {
        return marked;
    }
    ppd_option_t* known = ppdFindOption(ppd, option);
    return known != nullptr ? ppdFindChoice(known, known->defchoice) : nullptr;
}

const char* kelpPpdGetChoiceAsStrDefault(ppd_file_t* ppd, const char* option,
                                         const char* defaultValue) {
    const ppd_choice_t* choice = kelpPpdGetChoice(ppd, option);
    return choice != nullptr ? choice->choice : defaultValue;
}

int kelpPpdGetChoiceAsIntDefault(ppd_file_t* ppd, const char* option, int defaultValue) {
    const ppd_choice_t* choice = kelpPpdGetChoice(ppd, option);
    return choice != nullptr ? kelpTextToInt(choice->choice) : defaultValue;
}

std::int8_t kelpPpdGetChoiceAsBoolDefault(ppd_file_t* ppd, const char* option, bool defaultValue) {
    const ppd_choice_t* choice = kelpPpdGetChoice(ppd, option);
    if (choice == nullptr) {
        return defaultValue ? 1 : 0;
    }
    return kelpChoiceToBool(choice->choice);
}

const char* kelpPpdGetAttrAsStrDefault(ppd_file_t* ppd, const char* name, const char* spec,
                                       const char* defaultValue) {
    const ppd_attr_t* attribute = ppdFindAttr(ppd, name, spec);
    return attribute != nullptr && attribute->value != nullptr ? attribute->value : defaultValue;
}

double kelpPpdGetAttrAsFloatDefault(ppd_file_t* ppd, const char* name, const char* spec,
                                    double defaultValue) {
    const char* value = kelpPpdGetAttrAsStrDefault(ppd, name, spec, nullptr);
    // NOLINTNEXTLINE(cert-err34-c): any text is taken, as atof does
    return value != nullptr ? std::atof(value) : defaultValue;
}
