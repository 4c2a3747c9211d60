#ifndef KELP_APP_TRANSLATIONS_H
#define KELP_APP_TRANSLATIONS_H

#include <pappl/pappl.h>

#include <string>
#include <string_view>

namespace kelp_app {

/// Adds the drivers' texts for the attributes of our own to the web pages, in each of the drivers'
/// languages and in English. Before the server runs.
void addTranslations(pappl_system_t* system);

/// The texts of a language as lines `"key" = "text";`: an attribute by its name, "halftone", and a
/// keyword behind a dot, "halftone.burkes".
std::string stringsOf(std::string_view language);

}  // namespace kelp_app

#endif
