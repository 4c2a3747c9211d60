#include "tests/app/ipp_printer.h"

#include <stdexcept>

#include "tests/spooler/wait_until.h"

namespace kelp_test {
namespace {

std::string text_of(ipp_t* response, const char* name) {
    ipp_attribute_t* found = ippFindAttribute(response, name, IPP_TAG_ZERO);
    if (found == nullptr) {
        return "";
    }
    std::string text(ippAttributeString(found, nullptr, 0) + 1, '\0');
    ippAttributeString(found, text.data(), text.size());
    text.pop_back();
    return text;
}

int number_of(ipp_t* job) {
    return ippGetInteger(ippFindAttribute(job, "job-id", IPP_TAG_INTEGER), 0);
}

}  // namespace

Connection connect_to(int port) {
    return Connection(httpConnect2("localhost", port, nullptr, AF_UNSPEC,
                                   HTTP_ENCRYPTION_IF_REQUESTED, 1, 30000, nullptr));
}

IppPrinter::IppPrinter(int port, const std::string& name)
    : port_(port),
      uri_("ipp://localhost:" + std::to_string(port) + "/ipp/print/" + name),
      resource_("/ipp/print/" + name) {}

ipp_t* IppPrinter::request(ipp_op_t operation) const {
    ipp_t* request = ippNewRequest(operation);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri_.c_str());
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, "pat");
    return request;
}

IppPrinter::Response IppPrinter::ask(ipp_t* request, const std::string& document,
                                     const Pause& pause) const {
    const Connection http = connect_to(port_);
    if (!http) {
        ippDelete(request);
        throw std::runtime_error("the application does not answer");
    }
    const http_status_t status = cupsSendRequest(http.get(), request, resource_.c_str(),
                                                 ippLength(request) + document.size());
    ippDelete(request);
    if (status == HTTP_STATUS_CONTINUE && !document.empty()) {
        if (pause.during) {
            cupsWriteRequestData(http.get(), document.data(), pause.after);
            httpFlushWrite(http.get());
            pause.during();
        }
        cupsWriteRequestData(http.get(), document.data() + pause.after,
                             document.size() - pause.after);
    }
    Response response(cupsGetResponse(http.get(), resource_.c_str()), ippDelete);
    if (!response || ippGetStatusCode(response.get()) >= IPP_STATUS_REDIRECTION_OTHER_SITE) {
        // Who is refused before the whole document is sent may find the line cut.
        throw std::runtime_error(response ? ippErrorString(ippGetStatusCode(response.get())) +
                                                (": " + text_of(response.get(), "status-message"))
                                          : "no answer");
    }
    return response;
}

ipp_t* IppPrinter::print_job(const std::string& format) const {
    ipp_t* job = request(IPP_OP_PRINT_JOB);
    ippAddString(job, IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr,
                 format.c_str());
    return job;
}

int IppPrinter::print(const std::string& format, const std::string& document,
                      const Ticket& ticket) const {
    ipp_t* job = print_job(format);
    if (ticket) {
        ticket(job);
    }
    return number_of(ask(job, document).get());
}

int IppPrinter::print_with_pause(const std::string& format, const std::string& document,
                                 const Pause& pause) const {
    return number_of(ask(print_job(format), document, pause).get());
}

IppJob IppPrinter::finished(int job) const {
    IppJob found;
    const bool ended = wait_until([&] {
        ipp_t* question = request(IPP_OP_GET_JOB_ATTRIBUTES);
        ippAddInteger(question, IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
        const Response response = ask(question);
        found.state = ippGetInteger(ippFindAttribute(response.get(), "job-state", IPP_TAG_ENUM), 0);
        found.reasons = text_of(response.get(), "job-state-reasons");
        found.message = text_of(response.get(), "job-state-message");
        return found.state >= IPP_JSTATE_CANCELED;
    });
    if (!ended) {
        throw std::runtime_error("job " + std::to_string(job) + " does not end");
    }
    return found;
}

void IppPrinter::cancel(int job) const {
    ipp_t* question = request(IPP_OP_CANCEL_JOB);
    ippAddInteger(question, IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
    ask(question);
}

std::string IppPrinter::attribute(const std::string& name) const {
    return text_of(ask(request(IPP_OP_GET_PRINTER_ATTRIBUTES)).get(), name.c_str());
}

IppPrinter::Ticket media_size(int width, int length) {
    return [=](ipp_t* job) {
        ipp_t* size = ippNew();
        ippAddInteger(size, IPP_TAG_ZERO, IPP_TAG_INTEGER, "x-dimension", width);
        ippAddInteger(size, IPP_TAG_ZERO, IPP_TAG_INTEGER, "y-dimension", length);
        ipp_t* media = ippNew();
        ippAddCollection(media, IPP_TAG_ZERO, "media-size", size);
        ippAddCollection(job, IPP_TAG_JOB, "media-col", media);
        ippDelete(size);
        ippDelete(media);
    };
}

IppPrinter::Ticket keyword(const std::string& name, const std::string& value) {
    return [=](ipp_t* job) {
        ippAddString(job, IPP_TAG_JOB, IPP_TAG_KEYWORD, name.c_str(), nullptr, value.c_str());
    };
}

IppPrinter::Ticket integer(const std::string& name, int value) {
    return
        [=](ipp_t* job) { ippAddInteger(job, IPP_TAG_JOB, IPP_TAG_INTEGER, name.c_str(), value); };
}

IppPrinter::Ticket boolean(const std::string& name, bool value) {
    return [=](ipp_t* job) {
        ippAddBoolean(job, IPP_TAG_JOB, name.c_str(), static_cast<char>(value));
    };
}

IppPrinter::Ticket all_of(const std::vector<IppPrinter::Ticket>& tickets) {
    return [=](ipp_t* job) {
        for (const IppPrinter::Ticket& ticket : tickets) {
            ticket(job);
        }
    };
}

}  // namespace kelp_test
