#ifndef KELP_APP_TEST_LABEL_H
#define KELP_APP_TEST_LABEL_H

#include <pappl/pappl.h>

#include <filesystem>
#include <string_view>

namespace kelp_app {

// The test label of a printer's model: a ruler, bars, barcodes and greys, to see by whether the
// printer is well. It is in the program; a document of the format kTestLabelFormat says no more
// than that it is to be printed.

constexpr const char* kTestLabelFormat = "application/vnd.kelp-test-label";
constexpr std::string_view kTestLabelDocument = "kelp test label\n";

/// Prints documents of the format. Once, before the server runs.
/// @param folder that documents wait in; as long as the server
void addTestLabelFilter(pappl_system_t* system, const std::filesystem::path& folder);

/// Makes such a document, for the framework to print. A pappl_pr_testpage_cb_t: null, with a line
/// in the log, where it cannot be made.
const char* makeTestLabelDocument(pappl_printer_t* printer, char* path, size_t size);

}  // namespace kelp_app

#endif
