#ifndef KELP_APP_TEST_LABEL_TEXTS_H
#define KELP_APP_TEST_LABEL_TEXTS_H

#include <span>
#include <string_view>

namespace kelp_app {

struct TestLabelText {
    std::string_view model;  ///< "kelp-label-4inch"
    std::string_view postscript;
};

/// One a model, made from examples/test-label when this is built.
std::span<const TestLabelText> testLabelTexts();

}  // namespace kelp_app

#endif
