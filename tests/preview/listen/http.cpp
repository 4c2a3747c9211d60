#include "tests/preview/listen/http.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <stdexcept>

#include "tests/preview/listen/connection.h"

namespace kelp_test {

HttpAnswer http(int port, const std::string& request, const std::string& address) {
    const Connection connection(port, address);
    connection.send(request);
    const std::string all = connection.read_all();
    const std::size_t head_end = all.find("\r\n\r\n");
    if (!all.starts_with("HTTP/1.1 ") || head_end == std::string::npos) {
        throw std::runtime_error("no HTTP answer: " + all.substr(0, 200));
    }
    HttpAnswer answer;
    answer.status = std::stoi(all.substr(9, 3));
    answer.body = all.substr(head_end + 4);
    std::istringstream head(all.substr(0, head_end));
    std::string line;
    std::getline(head, line);
    while (std::getline(head, line)) {
        const std::size_t colon = line.find(": ");
        std::string name = line.substr(0, colon);
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        answer.headers[name] = line.substr(colon + 2, line.find('\r') - colon - 2);
    }
    return answer;
}

HttpAnswer http_get(int port, const std::string& path, const std::string& more) {
    return http(port, "GET " + path + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                          "\r\nConnection: close\r\n" + more + "\r\n");
}

}  // namespace kelp_test
