#pragma once

#include "tests/reference/job/output.h"
#include "tests/reference/job/settings.h"

namespace reference {

// The commands that stand before the graphic of every page.
void jobSetup(Output& output, const Settings& settings);

}  // namespace reference
