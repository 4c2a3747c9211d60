#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kelp_test {

// The text of a small printer description. Nothing in it is checked: a text that libcups refuses
// can be built as well.
class Ppd {
  public:
    // A page size in points; the first one is the default.
    Ppd& page_size(const std::string& name, const std::string& width, const std::string& length);
    // Lets a job ask for "PageSize=Custom.WIDTHxLENGTH".
    Ppd& custom_page_size();
    // The first choice is the default.
    Ppd& option(const std::string& name, const std::vector<std::string>& choices);
    Ppd& attribute(const std::string& name, const std::string& value);

    std::string text() const;

  private:
    struct Size {
        std::string name;
        std::string width;
        std::string length;
    };
    std::vector<Size> sizes_;
    std::string body_;
};

// A PPD with one page size of 288 × 432 points ("w288h432") and nothing else.
Ppd bare_ppd();

}  // namespace kelp_test
