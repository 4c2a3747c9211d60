#pragma once

#include <string>
#include <vector>

#include "tests/support/ppd_file.h"

namespace kelp_test {

// A PPD that offers every option, each with good, odd and useless choices. Recording is off unless
// the job asks for it, and then goes to the working directory.
const Ppd& generous_ppd();

struct OptionChoices {
    std::string name;
    std::vector<std::string> choices;
};
const std::vector<OptionChoices>& generous_options();

}  // namespace kelp_test
