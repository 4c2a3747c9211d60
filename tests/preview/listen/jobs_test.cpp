// What becomes of the jobs that come.

#include <filesystem>
#include <memory>

#include "tests/preview/listen/http.h"
#include "tests/preview/listen/listen_test.h"
#include "tests/preview/read_png.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

class ListenJobs : public ListenTest {};

TEST_F(ListenJobs, StoresAStreamAndItsPictureAndPrintsALine) {
    start();
    print(one);
    EXPECT_EQ(names_in(jobs()), Names{"job-0001"});
    EXPECT_EQ(names_in(jobs() / "job-0001"), (Names{"job.zpl", "label-1.png"}));
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), one);
    EXPECT_EQ(read_png(jobs() / "job-0001/label-1.png").rows, dots);
    EXPECT_EQ(listener().output(), Names{"Job 1: 1 label, " + std::to_string(one.size()) +
                                         " bytes from 127.0.0.1 in jobs/job-0001"});
}

TEST_F(ListenJobs, MakesAPictureOfEachLabelTurnedAsThePrinterWould) {
    start();
    print(one + "^POI\n" + one);
    EXPECT_EQ(names_in(jobs() / "job-0001"), (Names{"job.zpl", "label-1.png", "label-2.png"}));
    EXPECT_EQ(read_png(jobs() / "job-0001/label-1.png").rows, dots);
    EXPECT_EQ(read_png(jobs() / "job-0001/label-2.png").rows,
              (Rows{"........####....", "..#.##...#..#..."}));
    EXPECT_NE(listener().output().at(0).find(": 2 labels, "), std::string::npos);
}

TEST_F(ListenJobs, TakesSeveralAtATimeAndMixesNothing) {
    start();
    std::vector<std::unique_ptr<Connection>> senders;
    for (int i = 0; i < 8; ++i) {
        senders.push_back(std::make_unique<Connection>(listener().port()));
    }
    const auto stream = [&](std::size_t i) { return one + "^FX" + std::to_string(i) + "\n"; };
    for (std::size_t position = 0; position < stream(0).size(); ++position) {
        for (std::size_t i = 0; i < senders.size(); ++i) {
            ASSERT_TRUE(senders[i]->send(stream(i).substr(position, 1)));
        }
    }
    // the last one first: jobs are numbered by their ends
    for (std::size_t i = senders.size(); i-- > 0;) {
        senders[i]->end();
        senders[i]->read_all();
    }
    ASSERT_EQ(names_in(jobs()).size(), 8U);
    for (std::size_t i = 0; i < senders.size(); ++i) {
        const fs::path job = jobs() / ("job-000" + std::to_string(8 - i));
        EXPECT_EQ(read_file(job / "job.zpl"), stream(i));
        EXPECT_EQ(read_png(job / "label-1.png").rows, dots);
    }
}

TEST_F(ListenJobs, TakesAJobThatIsLargerThanAnyBuffer) {
    start();
    // 1000 rows of 1000 bytes as digits: 2 million bytes
    std::string digits;
    for (int i = 0; i < 1'000'000; ++i) {
        digits += i % 3 == 0 ? "A5" : "3C";
    }
    const std::string stream = block(1'000'000, 1000, digits);
    print(stream);
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), stream);
    const Picture picture = read_png(jobs() / "job-0001/label-1.png");
    ASSERT_EQ(picture.rows.size(), 1000U);
    // byte 0 is A5, byte 1 is 3C
    EXPECT_EQ(picture.rows[0].substr(0, 16), "#.#..#.#..####..");
}

TEST_F(ListenJobs, StoresGarbageWithItsWarnings) {
    start();
    std::string garbage;
    for (int i = 0; i < 4096; ++i) {
        garbage += static_cast<char>(i * 37 % 256);
    }
    print(garbage);
    EXPECT_EQ(names_in(jobs() / "job-0001"), Names{"job.zpl"});
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), garbage);
    const std::string line = listener().output().at(0);
    EXPECT_EQ(line.find("Job 1: 0 labels, "), 0U) << line;
    EXPECT_NE(line.find(" warning"), std::string::npos) << line;
    print(one);
    EXPECT_TRUE(fs::exists(jobs() / "job-0002/label-1.png"));
}

TEST_F(ListenJobs, StoresATruncatedLabelWithTheRowsItHas) {
    start();
    print(one.substr(0, one.find("0F,") + 1));
    EXPECT_EQ(read_png(jobs() / "job-0001/label-1.png").rows, Rows{dots[0]});
    EXPECT_NE(listener().output().at(0).find("1 label, 2 warnings,"), std::string::npos)
        << listener().output().at(0);
}

TEST_F(ListenJobs, KeepsTheLabelsBeforeOneThatIsRefused) {
    start();
    print(one + "^XX~DGR:A.GRF,0,0,\n^XGR:A.GRF^XZ");
    EXPECT_EQ(names_in(jobs() / "job-0001"), (Names{"job.zpl", "label-1.png"}));
    EXPECT_NE(listener().output().at(0).find("1 label, 1 warning,"), std::string::npos);
}

TEST_F(ListenJobs, StoresNothingOfAConnectionWithoutAByte) {
    start();
    print("");
    EXPECT_TRUE(listener().says("kelp-preview: job from 127.0.0.1 without a byte"));
    EXPECT_EQ(names_in(jobs()), Names{});
    print(one);
    EXPECT_EQ(names_in(jobs()), Names{"job-0001"});
}

TEST_F(ListenJobs, ShowsWhatCameBeforeAConnectionBroke) {
    start();
    Connection sender(listener().port());
    ASSERT_TRUE(sender.send(one));
    // a reset overtakes bytes that nobody has read yet: the unfinished folder says that they are
    const auto has_come = [&] {
        for (const auto& entry : fs::recursive_directory_iterator(jobs())) {
            if (entry.path().filename() == "job.zpl" && fs::file_size(entry) == one.size()) {
                return true;
            }
        }
        return false;
    };
    ASSERT_TRUE(wait_until(has_come));
    sender.reset();
    ASSERT_TRUE(wait_until([&] { return !listener().output().empty(); }));
    EXPECT_NE(listener().output()[0].find("1 label, 1 warning,"), std::string::npos);
    EXPECT_EQ(read_png(jobs() / "job-0001/label-1.png").rows, dots);
}

TEST_F(ListenJobs, RefusesAJobThatTheDiskHasNoRoomForAndGoesOn) {
    start();
    listener().limit_file_size(5000);
    const Connection sender(listener().port());
    sender.send(std::string(5001, 'x'));
    sender.read_all();
    EXPECT_TRUE(listener().says("kelp-preview: job from 127.0.0.1 refused: jobs: File too large"));
    EXPECT_EQ(names_in(jobs()), Names{});
    print(one);
    EXPECT_EQ(read_png(jobs() / "job-0001/label-1.png").rows, dots);
}

TEST_F(ListenJobs, StoresAStreamWhosePictureHasNoRoom) {
    start();
    // 50 x 50 bytes of noise, printed ten times as large: the picture takes more than the stream
    Random random(1);
    std::string digits;
    for (int i = 0; i < 5000; ++i) {
        digits += "0123456789ABCDEF"[random.between(0, 15)];
    }
    const std::string stream = "^XX~DGR:N.GRF,2500,50,\n" + digits + "^XGR:N.GRF,10,10^XZ\n";
    listener().limit_file_size(stream.size());
    print(stream);
    EXPECT_EQ(names_in(jobs() / "job-0001"), Names{"job.zpl"});
    EXPECT_EQ(read_file(jobs() / "job-0001/job.zpl"), stream);
    EXPECT_NE(listener().output().at(0).find(": 0 labels, 1 warning,"), std::string::npos);
    EXPECT_NE(http_get(listener().web_port(), "/").body.find("<li>label 1: File too large</li>"),
              std::string::npos);
}

TEST_F(ListenJobs, NumbersGoOnWhereTheFolderStands) {
    start();
    print(one);
    print(one);
    EXPECT_EQ(listener().stop(), 0);
    fs::create_directory(jobs() / "job-0041");
    write_file(jobs() / "job-7.zpl", "another's");
    write_file(jobs() / "job-99999999999999999999", "no number of a job");
    const auto before = fs::last_write_time(jobs() / "job-0001/job.zpl");
    start();
    print(one + one);
    EXPECT_EQ(names_in(jobs()), (Names{"job-0001", "job-0002", "job-0041", "job-0042", "job-7.zpl",
                                       "job-99999999999999999999"}));
    EXPECT_EQ(names_in(jobs() / "job-0042"), (Names{"job.zpl", "label-1.png", "label-2.png"}));
    EXPECT_EQ(fs::last_write_time(jobs() / "job-0001/job.zpl"), before);
    EXPECT_EQ(read_file(jobs() / "job-7.zpl"), "another's");
}

TEST_F(ListenJobs, NumbersBeyondFourDigitsGoOnToo) {
    fs::create_directories(jobs() / "job-9999");
    start();
    print(one);
    EXPECT_TRUE(fs::exists(jobs() / "job-10000/label-1.png"));
}

TEST_F(ListenJobs, FollowsAndReplacesNothingThatTakesTheNextNames) {
    fs::create_directory(dir / "precious");
    write_file(dir / "precious/job.zpl", "kept");
    start();
    // planted while it runs, so it cannot know them
    fs::create_directory_symlink(dir / "precious", jobs() / "job-0001");
    fs::create_symlink("nowhere", jobs() / "job-0002");
    write_file(jobs() / "job-0003", "a file");
    fs::create_directory(jobs() / "job-0004");
    print(one);
    EXPECT_EQ(names_in(dir / "precious"), Names{"job.zpl"});
    EXPECT_EQ(read_file(dir / "precious/job.zpl"), "kept");
    EXPECT_EQ(fs::read_symlink(jobs() / "job-0002"), "nowhere");
    EXPECT_EQ(read_file(jobs() / "job-0003"), "a file");
    EXPECT_EQ(names_in(jobs() / "job-0004"), Names{});
    EXPECT_EQ(read_png(jobs() / "job-0005/label-1.png").rows, dots);
    EXPECT_EQ(names_in(jobs()).size(), 5U);
}

TEST_F(ListenJobs, SkipsLinksThatWereThereBefore) {
    fs::create_directory(jobs());
    fs::create_symlink("nowhere", jobs() / "job-0003");
    start();
    print(one);
    EXPECT_EQ(names_in(jobs()), (Names{"job-0003", "job-0004"}));
    EXPECT_FALSE(fs::exists(jobs() / "nowhere"));
}

}  // namespace
}  // namespace kelp_test
