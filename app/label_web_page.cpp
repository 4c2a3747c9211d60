#include "app/label_web_page.h"

#include <deque>
#include <exception>
#include <mutex>
#include <string>
#include <string_view>

#include "app/last_label.h"
#include "app/vendor_attributes.h"

namespace kelp_app {

namespace {

/// The numbers of printers. The framework keeps pointers to them, and has no moment at which it
/// needs them no more.
int* keep(int printer) {
    static std::mutex guard;
    static std::deque<int> printers;
    const std::lock_guard lock(guard);
    return &printers.emplace_back(printer);
}

std::span<const Keyword> halftones() {
    for (const VendorAttribute& attribute : vendorAttributes()) {
        if (attribute.option == std::string_view("HalftoneType")) {
            return attribute.keywords;
        }
    }
    return {};
}

/// Within the page: the framework (1.3) answers for what a browser has already in a way that takes
/// the connection, and the picture asked for next, with it.
void showFigure(pappl_client_t* client, const std::string& picture, const char* title) {
    std::string encoded((picture.size() + 2) / 3 * 4 + 1, '\0');
    httpEncode64_2(encoded.data(), static_cast<int>(encoded.size()), picture.data(),
                   static_cast<int>(picture.size()));
    papplClientHTMLPuts(client,
                        "<figure style=\"display: inline-block; margin: 1em;\">"
                        "<img style=\"max-width: 20em; border: 1px solid #888; background: #fff;\" "
                        "src=\"data:image/png;base64,");
    papplClientHTMLPuts(client, encoded.c_str());
    papplClientHTMLPrintf(client, "\" alt=\"%s\"><figcaption>%s</figcaption></figure>\n", title,
                          title);
}

void showPictures(pappl_client_t* client, const Label& label) {
    showFigure(client, pictureOf(label.commands), "As it printed");
    papplClientHTMLPuts(client, "<h2 class=\"title\">In every halftone</h2>\n");
    for (const Keyword& halftone : halftones()) {
        const std::string key = std::string("halftone.") + halftone.keyword;
        const char* text = papplClientGetLocString(client, key.c_str());
        showFigure(client, pictureInHalftone(label, kelpHalftoneTypeFromStr(halftone.choice)),
                   text != key ? text : halftone.keyword);
    }
}

bool showPage(pappl_client_t* client, void* data) {
    if (!papplClientHTMLAuthorize(client)) {
        return true;
    }
    const int number = *static_cast<const int*>(data);
    pappl_printer_t* printer =
        papplSystemFindPrinter(papplClientGetSystem(client), nullptr, number, nullptr);
    if (printer == nullptr) {
        return papplClientRespond(client, HTTP_STATUS_NOT_FOUND, nullptr, nullptr, 0, 0);
    }
    papplClientHTMLPrinterHeader(client, printer, "Last Label", 0, nullptr, nullptr);
    try {
        if (const std::shared_ptr<const Label> label = lastLabel(number)) {
            showPictures(client, *label);
        } else {
            papplClientHTMLPuts(client,
                                "<p>No page was printed since the server was started.</p>\n");
        }
    } catch (const std::exception& error) {
        papplLogClient(client, PAPPL_LOGLEVEL_ERROR, "The label cannot be shown: %s", error.what());
        papplClientHTMLPuts(client, "<p>The label cannot be shown.</p>\n");
    }
    papplClientHTMLPrinterFooter(client);
    return true;
}

}  // namespace

void addLabelPage(pappl_printer_t* printer) {
    char path[512];
    papplPrinterGetPath(printer, "last-label", path, sizeof path);
    papplSystemAddResourceCallback(papplPrinterGetSystem(printer), path, "text/html", showPage,
                                   keep(papplPrinterGetID(printer)));
    papplPrinterAddLink(printer, "Last Label", path,
                        PAPPL_LOPTIONS_NAVIGATION | PAPPL_LOPTIONS_STATUS);
}

}  // namespace kelp_app
