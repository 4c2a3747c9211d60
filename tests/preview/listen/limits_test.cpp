// Each limit, on both of its sides.

#include <filesystem>

#include "tests/preview/listen/http.h"
#include "tests/preview/listen/listen_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

class ListenLimits : public ListenTest {};

TEST_F(ListenLimits, RefusesAJobOverTheSizeLimitAndStoresNothing) {
    start({"--max-job-size", "100"});
    const Connection sender(listener().port());
    ASSERT_TRUE(sender.send(std::string(101, 'x')));
    sender.read_all();  // closed although its end has not come
    EXPECT_TRUE(
        listener().says("kelp-preview: job from 127.0.0.1 refused: over the limit of 100 bytes"));
    EXPECT_EQ(names_in(jobs()), Names{});
    EXPECT_TRUE(listener().output().empty());

    print(std::string(100, 'x'));
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), std::string(100, 'x'));
}

TEST_F(ListenLimits, CountsTheSizeOverAllThatCame) {
    start({"--max-job-size", "100"});
    const Connection sender(listener().port());
    for (int i = 0; i < 60; ++i) {
        sender.send("xx");
    }
    sender.read_all();
    EXPECT_TRUE(listener().says("refused: over the limit of 100 bytes"));
    EXPECT_TRUE(wait_until([&] { return names_in(jobs()).empty(); }));
}

TEST_F(ListenLimits, LetsAConnectionOverTheLimitWaitInLine) {
    start({"--max-connections", "2"});
    const Connection first(listener().port());
    const Connection second(listener().port());
    ASSERT_TRUE(first.send("^FX1"));
    ASSERT_TRUE(second.send("^FX2"));
    // both are taken: each has its unfinished folder
    ASSERT_TRUE(wait_until([&] { return names_in(jobs()).size() == 2; }));
    const Connection third(listener().port());
    ASSERT_TRUE(third.send("^FX3"));
    third.end();
    // the page is served by the same loop, behind the printer's port: two answers are two turns
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(http_get(listener().web_port(), "/").status, 200);
    }
    EXPECT_FALSE(third.is_ended());
    EXPECT_TRUE(listener().output().empty());

    second.end();
    second.read_all();
    third.read_all();
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), "^FX2");
    EXPECT_EQ(read_file(jobs() / "job-0002/job.zpl"), "^FX3");
    first.end();
    first.read_all();
    EXPECT_EQ(read_file(jobs() / "job-0003/job.zpl"), "^FX1");
}

TEST_F(ListenLimits, EndsTheJobOfASilentSenderAndShowsWhatCame) {
    start({"--idle-time", "1"});
    const Connection sender(listener().port());
    ASSERT_TRUE(sender.send(one));
    sender.read_all();
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), one);
    EXPECT_NE(listener().output().at(0).find("1 label, 1 warning,"), std::string::npos);
    EXPECT_NE(http_get(listener().web_port(), "/")
                  .body.find("<li>the sender was silent for 1 s: ended there</li>"),
              std::string::npos);
}

TEST_F(ListenLimits, EndsASilentConnectionWithoutAJob) {
    start({"--idle-time", "1"});
    Connection(listener().port()).read_all();
    EXPECT_TRUE(listener().says("without a byte: the sender was silent for 1 s"));
    EXPECT_EQ(names_in(jobs()), Names{});
}

TEST_F(ListenLimits, DoesNotCallASenderSilentThatGoesOn) {
    start({"--idle-time", "2"});
    const Connection sender(listener().port());
    for (const char c : std::string("^FXslow")) {
        ASSERT_TRUE(sender.send(std::string(1, c)));
        std::this_thread::sleep_for(std::chrono::milliseconds(400));  // 2.8 s in all
    }
    sender.end();
    sender.read_all();
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), "^FXslow");
    EXPECT_EQ(http_get(listener().web_port(), "/").body.find("silent"), std::string::npos);
}

TEST_F(ListenLimits, DrawsNoLabelOverTheLimitOfDots) {
    start({"--max-dots", "31"});  // the label has 32
    print(block(1, 1, "80") + one);
    EXPECT_EQ(names_in(jobs() / "job-0001"), (Names{"job.zpl", "label-1.png"}));
    EXPECT_NE(listener().output().at(0).find("1 label, 1 warning,"), std::string::npos);
    EXPECT_NE(http_get(listener().web_port(), "/").body.find("is over the limit of 31 dots</li>"),
              std::string::npos);
}

TEST_F(ListenLimits, DrawsTheLabelAtTheLimitOfDots) {
    start({"--max-dots", "32"});
    print(one);
    EXPECT_EQ(names_in(jobs() / "job-0001"), (Names{"job.zpl", "label-1.png"}));
    EXPECT_EQ(listener().output().at(0).find("warning"), std::string::npos);
}

TEST_F(ListenLimits, DrawsOnlySoManyLabelsOfAJob) {
    start({"--max-labels", "2"});
    print(one + one);
    EXPECT_NE(listener().output().at(0).find(": 2 labels, " + std::to_string(2 * one.size())),
              std::string::npos);
    print(one + one + one);
    EXPECT_EQ(names_in(jobs() / "job-0002"), (Names{"job.zpl", "label-1.png", "label-2.png"}));
    EXPECT_NE(listener().output().at(1).find(": 2 labels, 1 warning,"), std::string::npos);
    EXPECT_EQ(read_file(jobs() / "job-0002/job.zpl"), one + one + one);
}

TEST_F(ListenLimits, KeepsOnlySoManyJobsOfThisRun) {
    fs::create_directories(jobs() / "job-0001");
    write_file(jobs() / "job-0001/job.zpl", "of another run");
    start({"--keep", "2"});
    for (int i = 0; i < 3; ++i) {
        print(one);
    }
    EXPECT_TRUE(listener().says("kelp-preview: job 2 removed, the last 2 are kept"));
    EXPECT_EQ(names_in(jobs()), (Names{"job-0001", "job-0003", "job-0004"}));
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), "of another run");
    const int port = listener().web_port();
    EXPECT_EQ(http_get(port, "/job/2").status, 404);
    EXPECT_EQ(http_get(port, "/job/3").status, 200);
}

TEST_F(ListenLimits, LeavesWhatOthersPutInAJobsFolderThatGoes) {
    start({"--keep", "1"});
    print(one);
    write_file(jobs() / "job-0001/my-notes.txt", "mine");
    fs::remove(jobs() / "job-0001/label-1.png");
    write_file(jobs() / "job-0001/label-1.png", "mine too");
    print(one);
    EXPECT_TRUE(listener().says("what others put in its folder is left"));
    EXPECT_EQ(names_in(jobs() / "job-0001"), (Names{"label-1.png", "my-notes.txt"}));
}

TEST_F(ListenLimits, RemovesNothingThroughALinkInTheFoldersPlace) {
    start({"--keep", "1"});
    print(one);
    fs::rename(jobs() / "job-0001", dir / "moved");
    fs::create_directory_symlink(dir / "moved", jobs() / "job-0001");
    print(one);
    EXPECT_TRUE(listener().says("job 1 removed"));
    EXPECT_EQ(names_in(dir / "moved"), (Names{"job.zpl", "label-1.png"}));
}

}  // namespace
}  // namespace kelp_test
