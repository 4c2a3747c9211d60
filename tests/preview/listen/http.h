#pragma once

#include <map>
#include <string>

namespace kelp_test {

struct HttpAnswer {
    int status = 0;
    std::map<std::string, std::string> headers;  // names in lower case
    std::string body;
};

// Sends exactly this, without further ado, and takes the answer apart. Throws std::runtime_error
// when it is none.
HttpAnswer http(int port, const std::string& request, const std::string& address = "127.0.0.1");

// A GET as a browser of this machine would send it; further header lines end in CR LF.
HttpAnswer http_get(int port, const std::string& path, const std::string& more = "");

}  // namespace kelp_test
