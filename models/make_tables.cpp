// Prints the tables of printer models as a C++ source, when Kelp is built:
//
//     kelp_make_tables OUT.cpp PPD...
//
// Fails, and leaves OUT.cpp as it was, for a PPD that it does not wholly understand.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "models/ppd_model.h"

namespace {

namespace ppd = kelp_models::ppd;

std::string quoted(const std::string& text) {
    std::string literal = "\"";
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < ' ') {
            throw std::runtime_error("a control character in \"" + text + "\"");
        }
        if (c == '"' || c == '\\') {
            literal += '\\';
        }
        literal += c;
    }
    return literal + '"';
}

std::string quoted(const ppd::Choice& choice) {
    return quoted(choice.name) + ", " + quoted(choice.text);
}

std::string braced(const std::string& elements) {
    return '{' + elements + '}';
}

/// Prints an array and gives what a table refers to it by. C++ has no empty ones.
template <typename Element, typename PrintElement>
std::string printArray(std::ostream& out, const std::string& type, const std::string& name,
                       const std::vector<Element>& elements, const PrintElement& printElement) {
    if (elements.empty()) {
        return "{}";
    }
    std::ostringstream lines;  // the elements may print arrays of their own before
    for (const Element& element : elements) {
        lines << "    " << printElement(element) << ",\n";
    }
    out << "constexpr " << type << ' ' << name << "[] = {\n" << lines.str() << "};\n";
    return name;
}

/// Gives the initialiser of a Model.
std::string printModel(std::ostream& out, const ppd::Model& model, const std::string& number) {
    const std::string sizes =
        printArray(out, "PageSize", "kSizes" + number, model.sizes, [](const ppd::PageSize& size) {
            return braced(quoted(size.self) + ", " + std::to_string(size.width) + ", " +
                          std::to_string(size.length));
        });
    int optionNumber = 0;
    const std::string options = printArray(
        out, "Option", "kOptions" + number, model.options, [&](const ppd::Option& option) {
            const std::string name = "kChoices" + number + "_" + std::to_string(optionNumber++);
            const std::string choices =
                printArray(out, "Choice", name, option.choices,
                           [](const ppd::Choice& choice) { return braced(quoted(choice)); });
            return braced(quoted(option.self) + ", " + choices + ", " +
                          std::to_string(option.defaultChoice));
        });
    const std::string conflicts = printArray(
        out, "Conflict", "kConflicts" + number, model.conflicts, [](const ppd::Conflict& conflict) {
            return braced(quoted(conflict.first) + ", " + quoted(conflict.second));
        });
    std::ostringstream text;
    text << quoted(model.name) << ", " << quoted(model.makeAndModel) << ", "
         << quoted(model.deviceId) << ", Polarity::"
         << (model.polarity == Polarity::kBlackSpace ? "kBlackSpace" : "kWhiteSpace") << ", "
         << sizes << ", " << model.defaultSize << ", " << model.least[0] << ", " << model.least[1]
         << ", " << model.most[0] << ", " << model.most[1] << ", " << quoted(model.resolution)
         << ", " << options << ", " << conflicts;
    return braced(text.str());
}

/// Gives the initialiser of a Texts.
std::string printTexts(std::ostream& out, const ppd::Model& model, const std::string& number,
                       const std::string& language) {
    const ppd::Texts& texts = model.texts.at(language);
    const std::vector<ppd::Texts::value_type> list(texts.begin(), texts.end());
    const std::string array =
        printArray(out, "Text", "kTexts" + number + "_" + language, list, [](const auto& entry) {
            return braced(quoted(entry.first.first) + ", " + quoted(entry.first.second) + ", " +
                          quoted(entry.second));
        });
    return braced(quoted(model.name) + ", " + quoted(language) + ", " + array);
}

std::string tablesOf(const std::vector<ppd::Model>& models) {
    std::vector<std::string> tables;
    std::vector<std::string> texts;
    std::ostringstream out;
    out << "// Made of the PPD files.\n\n#include \"models/tables.h\"\n\n"
           "namespace kelp_models {\n\nnamespace {\n\n";
    for (const ppd::Model& model : models) {
        if (model.languages != models.front().languages) {
            throw std::runtime_error(model.name + " has other languages than " +
                                     models.front().name);
        }
        const std::string number = std::to_string(tables.size());
        tables.push_back(printModel(out, model, number));
        for (const auto& [language, unused] : model.texts) {
            texts.push_back(printTexts(out, model, number, language));
        }
    }
    const auto asItIs = [](const std::string& text) { return text; };
    const std::string modelTable = printArray(out, "Model", "kModelTable", tables, asItIs);
    const std::string textTable = printArray(out, "Texts", "kTextsTable", texts, asItIs);
    const std::string languageTable =
        printArray(out, "const char*", "kLanguageTable", models.front().languages,
                   [](const std::string& language) { return quoted(language); });
    out << "\n}  // namespace\n\n"
           "constinit const std::span<const Model> kModels = "
        << modelTable
        << ";\nconstinit const std::span<const char* const> kLanguages = " << languageTable
        << ";\nconstinit const std::span<const Texts> kTexts = " << textTable
        << ";\n\n}  // namespace kelp_models\n";
    return out.str();
}

void writeWhole(const std::string& path, const std::string& text) {
    const std::string part = path + ".part";
    std::ofstream file(part, std::ios::binary);
    file << text;
    file.close();
    if (!file || std::rename(part.c_str(), path.c_str()) != 0) {
        std::remove(part.c_str());
        throw std::runtime_error(path + " cannot be written");
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        if (argc < 3) {
            throw std::runtime_error("usage: kelp_make_tables OUT.cpp PPD...");
        }
        std::vector<ppd::Model> models;
        for (int i = 2; i < argc; ++i) {
            models.push_back(ppd::readModel(argv[i]));
        }
        writeWhole(argv[1], tablesOf(models));
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kelp_make_tables: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
