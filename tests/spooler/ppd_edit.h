#pragma once

#include <string>

namespace kelp_test {

// Edits a PPD as a person with a text editor would. Each throws std::runtime_error when there is
// nothing to edit.

// "*KEYWORD: ..." becomes "*KEYWORD: VALUE".
void set_value(std::string& ppd, const std::string& keyword, const std::string& value);

// The option with all that belongs to it: its choices, its default and its constraints.
void remove_option(std::string& ppd, const std::string& option);

// The choice gets another name.
void rename_choice(std::string& ppd, const std::string& option, const std::string& from,
                   const std::string& to);

}  // namespace kelp_test
