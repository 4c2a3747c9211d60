#pragma once

#include <cups/ppd.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kelp_test {

using Strings = std::vector<std::string>;

struct PpdCloser {
    void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};
using OpenPpd = std::unique_ptr<ppd_file_t, PpdCloser>;

// "label-2inch" and so on.
const Strings& every_model();
const Strings& label_models();
const Strings& stencil_models();

// The model's PPD in one of its languages ("de", "zh_CN"), English when none is named, with the
// defaults marked. Ends the test program when it cannot be opened.
OpenPpd open_ppd(const std::string& model, const std::string& language = {});

// The file's text.
std::string ppd_text(const std::string& model);

Strings choice_names(ppd_file_t* ppd, const char* option);
// "(none)" where there is none.
std::string default_choice(ppd_file_t* ppd, const char* option);
std::string label(ppd_file_t* ppd, const char* option, const char* choice);
std::string attribute(ppd_file_t* ppd, const char* name);

// "label-2inch" as a test's name: "label_2inch".
std::string test_name(const testing::TestParamInfo<std::string>& model);

}  // namespace kelp_test
