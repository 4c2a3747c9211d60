#pragma once

#include <cups/cups.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelp_test {

struct CloseConnection {
    void operator()(http_t* http) const { httpClose(http); }
};
using Connection = std::unique_ptr<http_t, CloseConnection>;

// To an application on a port of this machine; null where none answers.
Connection connect_to(int port);

// What IPP tells of a job.
struct IppJob {
    int state = 0;
    std::string reasons;  // separated by ','
    std::string message;
};

// A printer of an application, seen by a client.
class IppPrinter {
  public:
    IppPrinter(int port, const std::string& name);

    // Adds job attributes to a request.
    using Ticket = std::function<void(ipp_t*)>;

    // Sends a document and returns the number of its job. Throws std::runtime_error where it is
    // refused.
    int print(const std::string& format, const std::string& document,
              const Ticket& ticket = {}) const;
    // The same, with something to do when so many bytes of the document are sent.
    struct Pause {
        std::size_t after = 0;
        std::function<void()> during;
    };
    int print_with_pause(const std::string& format, const std::string& document,
                         const Pause& pause) const;
    // Waits for its end.
    IppJob finished(int job) const;
    void cancel(int job) const;
    // An attribute as text, values separated by ','; empty for none.
    std::string attribute(const std::string& name) const;

  private:
    using Response = std::unique_ptr<ipp_t, decltype(&ippDelete)>;
    Response ask(ipp_t* request, const std::string& document, const Pause& pause) const;
    Response ask(ipp_t* request, const std::string& document = {}) const {
        return ask(request, document, {});
    }
    ipp_t* request(ipp_op_t operation) const;
    ipp_t* print_job(const std::string& format) const;

    int port_;
    std::string uri_;
    std::string resource_;
};

// Tickets.
IppPrinter::Ticket media_size(int width, int length);  // hundredths of a millimetre
IppPrinter::Ticket keyword(const std::string& name, const std::string& value);
IppPrinter::Ticket integer(const std::string& name, int value);
IppPrinter::Ticket boolean(const std::string& name, bool value);
IppPrinter::Ticket all_of(const std::vector<IppPrinter::Ticket>& tickets);

}  // namespace kelp_test
