// How it ends.

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <system_error>

#include "tests/preview/listen/http.h"
#include "tests/preview/listen/listen_test.h"

namespace kelp_test {
namespace {

class ListenStop : public ListenTest {};

TEST_F(ListenStop, EndsWithZeroBetweenJobsOnEachSignal) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        start();
        print(one);
        listener().send_signal(signal);
        EXPECT_EQ(listener().exit_status(), 0) << signal;
    }
    EXPECT_EQ(names_in(jobs()), (Names{"job-0001", "job-0002", "job-0003"}));
}

TEST_F(ListenStop, DropsTheJobsThatAreNotWhole) {
    start();
    const Connection first(listener().port());
    const Connection second(listener().port());
    ASSERT_TRUE(first.send(one));
    ASSERT_TRUE(second.send(one.substr(0, 10)));
    ASSERT_TRUE(wait_until([&] { return names_in(jobs()).size() == 2; }));
    EXPECT_EQ(listener().stop(), 0);
    EXPECT_EQ(names_in(jobs()), Names{});
    EXPECT_TRUE(listener().output().empty());
    const std::vector<std::string> error = listener().error();
    const std::string dropped = "kelp-preview: job from 127.0.0.1 dropped: it was not whole";
    EXPECT_EQ(std::count(error.begin(), error.end(), dropped), 2);
    first.read_all();  // ended
}

TEST_F(ListenStop, StoresWhatHasComeWhole) {
    start();
    std::string many;
    for (int i = 0; i < 200; ++i) {
        many += one;
    }
    const Connection sender(listener().port());
    ASSERT_TRUE(sender.send(many));
    sender.end();
    const auto has_come = [&] {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(
                 jobs(), std::filesystem::directory_options::skip_permission_denied)) {
            if (entry.path().filename() == "label-1.png") {
                return true;
            }
        }
        return false;
    };
    ASSERT_TRUE(wait_until([&] {
        try {
            return has_come();
        } catch (const std::filesystem::filesystem_error&) {
            return false;  // renamed while it was looked at
        }
    }));
    EXPECT_EQ(listener().stop(), 0);
    // 200 pictures and the stream
    EXPECT_EQ(names_in(jobs() / "job-0001").size(), 201U);
    EXPECT_EQ(listener().output().size(), 1U);
}

TEST_F(ListenStop, EndsWithOneWhenStandardOutputCannotBeWritten) {
    start();
    print("^FX1");
    // of 60 and some bytes: there is room for one more job, and not for its line
    listener().limit_file_size(100);
    const Connection sender(listener().port());
    sender.send("^FX2");
    sender.end();
    EXPECT_EQ(listener().exit_status(), 1);
    EXPECT_EQ(listener().output().size(), 1U);
}

TEST_F(ListenStop, FreesItsPortsAtOnce) {
    start();
    const int port = listener().port();
    const int web_port = listener().web_port();
    print(one);
    // its connection ends on the printer's side first, so the system remembers it there
    EXPECT_EQ(http_get(web_port, "/").status, 200);
    EXPECT_EQ(listener().stop(), 0);
    EXPECT_THROW(Connection{port}, std::system_error);
    start({"--port", std::to_string(port), "--web-port", std::to_string(web_port)});
    EXPECT_EQ(listener().port(), port);
    EXPECT_EQ(listener().web_port(), web_port);
    print(one);
    EXPECT_EQ(names_in(jobs()), (Names{"job-0001", "job-0002"}));
}

}  // namespace
}  // namespace kelp_test
