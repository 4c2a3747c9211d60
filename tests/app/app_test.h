#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/app/application.h"
#include "tests/app/ipp_printer.h"
#include "tests/spooler/socket_printer.h"
#include "tests/spooler/wait_until.h"

namespace kelp_test {

// An application with a printer on a port.
class AppTest : public testing::Test {
  protected:
    void add_printer(const std::string& model, const std::string& name = "labels") {
        application.add_printer(name, "kelp-" + model, device.device());
    }
    IppPrinter printer(const std::string& name = "labels") const {
        return {application.port(), name};
    }
    // What the device gets of a job that must succeed.
    std::string printed(const std::string& format, const std::string& document,
                        const IppPrinter::Ticket& ticket = {}) {
        const std::size_t before = device.received().size();
        const int number = printer().print(format, document, ticket);
        const IppJob job = printer().finished(number);
        EXPECT_EQ(job.state, IPP_JSTATE_COMPLETED) << job.reasons << "\n" << job.message;
        EXPECT_TRUE(wait_until([&] { return device.received().size() > before; }));
        return device.received().size() > before ? device.received().back() : std::string();
    }

    SocketPrinter device;
    Application application;
};

}  // namespace kelp_test
