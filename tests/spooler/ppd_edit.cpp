#include "tests/spooler/ppd_edit.h"

#include <sstream>
#include <stdexcept>

namespace kelp_test {

void set_value(std::string& ppd, const std::string& keyword, const std::string& value) {
    const std::string start = "\n*" + keyword + ":";
    const std::size_t line = ppd.find(start);
    if (line == std::string::npos) {
        throw std::runtime_error("the PPD has no " + keyword);
    }
    const std::size_t end = ppd.find('\n', line + 1);
    ppd.replace(line, end - line, start + " " + value);
}

void remove_option(std::string& ppd, const std::string& option) {
    std::istringstream lines(ppd);
    std::string kept;
    std::string line;
    std::size_t removed = 0;
    while (std::getline(lines, line)) {
        // "*Darkness ", "*DefaultDarkness:", "*OpenUI *Darkness/", "*UIConstraints: *A x *Darkness
        // y"
        const bool names_option = line.find("*" + option + " ") != std::string::npos ||
                                  line.find("*" + option + "/") != std::string::npos ||
                                  line.starts_with("*Default" + option + ":") ||
                                  line.ends_with("*" + option);
        if (names_option) {
            ++removed;
        } else {
            kept += line + "\n";
        }
    }
    if (removed == 0) {
        throw std::runtime_error("the PPD has no " + option);
    }
    ppd = kept;
}

void rename_choice(std::string& ppd, const std::string& option, const std::string& from,
                   const std::string& to) {
    const std::string start = "\n*" + option + " " + from + "/";
    const std::size_t line = ppd.find(start);
    if (line == std::string::npos) {
        throw std::runtime_error("the PPD has no " + option + " " + from);
    }
    ppd.replace(line, start.size(), "\n*" + option + " " + to + "/");
}

}  // namespace kelp_test
