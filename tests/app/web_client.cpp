#include "tests/app/web_client.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/app/ipp_printer.h"

namespace kelp_test {
namespace {

std::string rest_of(http_t* http, const std::string& path) {
    http_status_t status = HTTP_STATUS_CONTINUE;
    while (status == HTTP_STATUS_CONTINUE) {
        status = httpUpdate(http);
    }
    EXPECT_EQ(status, HTTP_STATUS_OK) << path;
    std::string page;
    char buffer[4096];
    for (ssize_t size = 1; status == HTTP_STATUS_OK && size > 0;) {
        size = httpRead2(http, buffer, sizeof buffer);
        page.append(buffer, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    }
    return page;
}

}  // namespace

std::string web_page(int port, const std::string& path, const std::string& language) {
    const Connection http = connect_to(port);
    if (!http) {
        return "";
    }
    httpSetField(http.get(), HTTP_FIELD_HOST, "localhost");
    httpSetField(http.get(), HTTP_FIELD_ACCEPT_LANGUAGE, language.c_str());
    return httpGet(http.get(), path.c_str()) == 0 ? rest_of(http.get(), path) : "";
}

std::string send_form(int port, const std::string& path, const std::string& fields) {
    // A hidden field shows that the form is the page's own.
    const std::string page = web_page(port, path);
    const std::string name = "name=\"session\" value=\"";
    const std::size_t at = page.find(name);
    EXPECT_NE(at, std::string::npos) << page;
    const std::size_t begin = at + name.size();
    const std::string body =
        "session=" + page.substr(begin, page.find('"', begin) - begin) + "&" + fields;
    const Connection http = connect_to(port);
    httpSetField(http.get(), HTTP_FIELD_HOST, "localhost");
    httpSetField(http.get(), HTTP_FIELD_CONTENT_TYPE, "application/x-www-form-urlencoded");
    httpSetLength(http.get(), body.size());
    if (httpPost(http.get(), path.c_str()) != 0 ||
        httpWrite2(http.get(), body.data(), body.size()) != static_cast<ssize_t>(body.size())) {
        ADD_FAILURE() << "the form could not be sent";
        return "";
    }
    return rest_of(http.get(), path);
}

}  // namespace kelp_test
