#include "preview/setup_commands.h"

#include <array>
#include <optional>
#include <string_view>

#include "preview/byte_reader.h"

namespace kelp_preview {
namespace {

struct NumberCommand {
    std::string_view name;
    std::optional<std::uint64_t> Setup::*value;
};
struct TextCommand {
    std::string_view name;
    std::string Setup::*value;
};

constexpr std::array kNumberCommands{
    NumberCommand{"^PW", &Setup::width},
    NumberCommand{"^LL", &Setup::length},
    NumberCommand{"~SD", &Setup::darkness},
};
constexpr std::array kTextCommands{
    TextCommand{"^MN", &Setup::mediaSensing}, TextCommand{"^PO", &Setup::orientation},
    TextCommand{"^PR", &Setup::speed},        TextCommand{"^MT", &Setup::printMethod},
    TextCommand{"^MM", &Setup::afterPrint},
};

/// The first parameter without the blanks around it.
std::string firstParameter(const std::string& parameters) {
    const std::string first = parameters.substr(0, parameters.find(','));
    const std::size_t begin = first.find_first_not_of(' ');
    return begin == std::string::npos
               ? std::string()
               : first.substr(begin, first.find_last_not_of(' ') - begin + 1);
}

}  // namespace

bool applySetupCommand(const std::string& command, const std::string& parameters,
                       std::uint64_t offset, Setup& setup, Remarks& warnings) {
    for (const NumberCommand& known : kNumberCommands) {
        if (command == known.name) {
            if (const auto number = leadingNumber(parameters)) {
                setup.*known.value = number;
            } else {
                warnings.add(offset, command + " without a number, skipped");
            }
            return true;
        }
    }
    for (const TextCommand& known : kTextCommands) {
        if (command == known.name) {
            const std::string text = firstParameter(parameters);
            if (text.empty()) {
                warnings.add(offset, command + " without a value, skipped");
            } else {
                setup.*known.value = printable(text);
            }
            return true;
        }
    }
    return false;
}

}  // namespace kelp_preview
