#include "tests/support/ppd_file.h"

namespace kelp_test {
namespace {

constexpr const char* head =
    "*PPD-Adobe: \"4.3\"\n"
    "*FormatVersion: \"4.3\"\n"
    "*FileVersion: \"1.0\"\n"
    "*LanguageVersion: English\n"
    "*LanguageEncoding: ISOLatin1\n"
    "*PCFileName: \"KELPTEST.PPD\"\n"
    "*Manufacturer: \"Kelp\"\n"
    "*Product: \"(Kelp test printer)\"\n"
    "*ModelName: \"Kelp test printer\"\n"
    "*ShortNickName: \"Kelp test printer\"\n"
    "*NickName: \"Kelp test printer\"\n"
    "*PSVersion: \"(3010.000) 0\"\n"
    "*LanguageLevel: \"3\"\n"
    "*ColorDevice: False\n"
    "*DefaultColorSpace: Gray\n";

constexpr const char* custom_size =
    "*VariablePaperSize: True\n"
    "*MaxMediaWidth: 1000\n"
    "*MaxMediaHeight: 2000\n"
    "*HWMargins: 0 0 0 0\n"
    "*CustomPageSize True: \"pop pop pop <</PageSize[5 -2 roll]>>setpagedevice\"\n"
    "*ParamCustomPageSize Width: 1 points 36 1000\n"
    "*ParamCustomPageSize Height: 2 points 36 2000\n"
    "*ParamCustomPageSize WidthOffset: 3 points 0 0\n"
    "*ParamCustomPageSize HeightOffset: 4 points 0 0\n"
    "*ParamCustomPageSize Orientation: 5 int 0 0\n";

std::string ui_option(const std::string& name, const std::string& first,
                      const std::string& choices) {
    return "*OpenUI *" + name + "/" + name + ": PickOne\n*Default" + name + ": " + first + "\n" +
           choices + "*CloseUI: *" + name + "\n";
}

}  // namespace

Ppd& Ppd::page_size(const std::string& name, const std::string& width, const std::string& length) {
    sizes_.push_back({name, width, length});
    return *this;
}

Ppd& Ppd::custom_page_size() {
    body_ += custom_size;
    return *this;
}

Ppd& Ppd::option(const std::string& name, const std::vector<std::string>& choices) {
    std::string lines;
    for (const std::string& choice : choices) {
        lines += "*" + name + " " + choice + "/" + choice + ": \"\"\n";
    }
    body_ += ui_option(name, choices.front(), lines);
    return *this;
}

Ppd& Ppd::attribute(const std::string& name, const std::string& value) {
    body_ += "*" + name + ": \"" + value + "\"\n";
    return *this;
}

std::string Ppd::text() const {
    std::string sizes;
    std::string areas;
    for (const Size& size : sizes_) {
        const std::string extent = size.width + " " + size.length;
        sizes += "*PageSize " + size.name + "/" + size.name + ": \"<</PageSize[" + extent +
                 "]>>setpagedevice\"\n";
        areas += "*ImageableArea " + size.name + ": \"0 0 " + extent + "\"\n*PaperDimension " +
                 size.name + ": \"" + extent + "\"\n";
    }
    std::string page_sizes;
    if (!sizes_.empty()) {
        page_sizes = ui_option("PageSize", sizes_.front().name, sizes) +
                     "*DefaultImageableArea: " + sizes_.front().name +
                     "\n*DefaultPaperDimension: " + sizes_.front().name + "\n" + areas;
    }
    return head + page_sizes + body_;
}

Ppd bare_ppd() {
    return Ppd().page_size("w288h432", "288", "432");
}

}  // namespace kelp_test
