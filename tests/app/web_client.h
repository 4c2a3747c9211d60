#pragma once

#include <string>

namespace kelp_test {

// A page of an application's web interface, in a language that a browser asks for; empty where it
// is not found.
std::string web_page(int port, const std::string& path, const std::string& language = "en");

// Sends the fields of a form, "name=value&name=value", as the page's own form does, and gives the
// page that comes back.
std::string send_form(int port, const std::string& path, const std::string& fields);

}  // namespace kelp_test
