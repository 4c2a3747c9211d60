#ifndef KELP_APP_PROGRAM_NAME_H
#define KELP_APP_PROGRAM_NAME_H

constexpr const char* kProgramName = "kelp-printer-app";

#endif
