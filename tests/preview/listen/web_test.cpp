// The web page over HTTP.

#include <filesystem>

#include "tests/preview/listen/http.h"
#include "tests/preview/listen/listen_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

class ListenWeb : public ListenTest {
  protected:
    HttpAnswer get(const std::string& path, const std::string& more = "") {
        return http_get(listener().web_port(), path, more);
    }
    HttpAnswer get_from_host(const std::string& host) {
        return http(listener().web_port(),
                    "GET / HTTP/1.1\r\nHost: " + host + "\r\nConnection: close\r\n\r\n");
    }
};

bool has(const HttpAnswer& answer, const std::string& text) {
    return answer.body.find(text) != std::string::npos;
}

TEST_F(ListenWeb, SaysThatNoJobHasCome) {
    start();
    const HttpAnswer page = get("/");
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.headers.at("content-type"), "text/html; charset=utf-8");
    EXPECT_TRUE(has(page, "No job has come yet"));
    EXPECT_TRUE(has(page, "<strong>127.0.0.1:" + std::to_string(listener().port()) + "</strong>"));
}

TEST_F(ListenWeb, ShowsTheNewestJobFirstWithPictureDescriptionAndStream) {
    start();
    print(one);
    print(block(1, 1, "80") + one);
    const HttpAnswer page = get("/");
    const std::size_t second = page.body.find(">Job 2</a></h2>");
    const std::size_t first = page.body.find(">Job 1</a></h2>");
    ASSERT_NE(second, std::string::npos);
    ASSERT_NE(first, std::string::npos);
    EXPECT_LT(second, first);
    // 9 of 32 dots: 1234 has 5 and 0F00 has 4
    EXPECT_TRUE(has(page,
                    "<img src=\"/job/2/label-2.png\" width=\"16\" height=\"2\" alt=\"Label 2 of "
                    "job 2 as it prints: 16 by 2 dots, 28.1 percent black\">"))
        << page.body;
    EXPECT_TRUE(has(page, "<pre>Label 2\n  size:             16 x 2 dots"));
    EXPECT_TRUE(has(page, "href=\"/job/2/job.zpl\""));
}

TEST_F(ListenWeb, ServesThePicturesAndStreamsThatWereStored) {
    start();
    print(one);
    const HttpAnswer picture = get("/job/1/label-1.png");
    EXPECT_EQ(picture.status, 200);
    EXPECT_EQ(picture.headers.at("content-type"), "image/png");
    EXPECT_EQ(picture.body, read_file(jobs() / "job-0001/label-1.png"));
    const HttpAnswer stream = get("/job/1/job.zpl");
    EXPECT_EQ(stream.headers.at("content-type"), "application/octet-stream");
    EXPECT_EQ(stream.headers.at("content-disposition"), "attachment; filename=\"job-1.zpl\"");
    EXPECT_EQ(stream.body, one);
    EXPECT_EQ(get("/job/1").status, 200);
    EXPECT_EQ(get("/style.css").headers.at("content-type"), "text/css; charset=utf-8");
}

TEST_F(ListenWeb, RenewsItselfUnlessAskedNotTo) {
    start();
    print(one);
    EXPECT_TRUE(has(get("/"), "<meta http-equiv=\"refresh\" content=\"2\">"));
    const HttpAnswer still = get("/still");
    EXPECT_FALSE(has(still, "http-equiv"));
    EXPECT_TRUE(has(still, "/job/1/label-1.png"));
}

TEST_F(ListenWeb, EscapesWhatAStreamSays) {
    start();
    print("<script>alert(\"1\")</script>&'\n" + one);
    for (const char* path : {"/", "/job/1"}) {
        const HttpAnswer page = get(path);
        EXPECT_FALSE(has(page, "<script")) << page.body;
        EXPECT_TRUE(has(page, "&lt;script&gt;alert(&quot;1&quot;)&lt;/script&gt;&amp;&#39;"))
            << page.body;
    }
}

TEST_F(ListenWeb, AllowsNoScriptNoFrameAndNoGuessing) {
    start();
    for (const char* path : {"/", "/none", "/style.css"}) {
        const HttpAnswer answer = get(path);
        const std::string& policy = answer.headers.at("content-security-policy");
        EXPECT_EQ(policy.find("default-src 'none'"), 0U) << policy;
        EXPECT_EQ(policy.find("script-src"), std::string::npos);
        EXPECT_EQ(policy.find("unsafe"), std::string::npos);
        EXPECT_NE(policy.find("frame-ancestors 'none'"), std::string::npos);
        EXPECT_EQ(answer.headers.at("x-content-type-options"), "nosniff");
        EXPECT_EQ(answer.headers.at("referrer-policy"), "no-referrer");
        EXPECT_EQ(answer.headers.count("access-control-allow-origin"), 0U);
    }
}

TEST_F(ListenWeb, AnswersHeadWithoutABody) {
    start();
    print(one);
    for (const char* path : {"/", "/job/1/label-1.png"}) {
        const HttpAnswer answer = http(listener().web_port(), std::string("HEAD ") + path +
                                                                  " HTTP/1.1\r\nHost: localhost\r\n"
                                                                  "Connection: close\r\n\r\n");
        EXPECT_EQ(answer.status, 200);
        EXPECT_EQ(answer.body, "");
        EXPECT_NE(answer.headers.at("content-length"), "0");
    }
}

TEST_F(ListenWeb, CanOnlyBeRead) {
    start();
    print(one);
    for (const char* method : {"POST", "PUT", "DELETE", "PATCH", "OPTIONS", "TRACE", "FOO"}) {
        const HttpAnswer answer =
            http(listener().web_port(), std::string(method) +
                                            " /job/1 HTTP/1.1\r\nHost: localhost\r\n"
                                            "Content-Length: 3\r\nConnection: close\r\n\r\nabc");
        EXPECT_EQ(answer.status, 405) << method;
        EXPECT_EQ(answer.headers.at("allow"), "GET, HEAD");
    }
    EXPECT_EQ(get("/job/1/label-1.png").status, 200);
}

TEST_F(ListenWeb, TakesNoPathToTheFileSystem) {
    start();
    print(one);
    write_file(jobs() / "job-0001/secret.txt", "secret");
    for (const char* path : {"/job/1/../../error",
                             "/../../../../etc/passwd",
                             "/job/1/%2e%2e/%2e%2e/error",
                             "/job/1/..%2f..%2ferror",
                             "//etc/passwd",
                             "/job/1/secret.txt",
                             "/job-0001/job.zpl",
                             "/job/01/job.zpl",
                             "/job/+1/job.zpl",
                             "/job/1/label-01.png",
                             "/job/1/label-2.png",
                             "/job/1/label-0.png",
                             "/job/1/label-1.png/",
                             "/job/1/label-1.png%00.txt/..",
                             "/job/1/",
                             "/job/",
                             "/job/2",
                             "/job/18446744073709551617",
                             "/jobs",
                             "/.",
                             "/index.html",
                             "/job/1%00"}) {
        const HttpAnswer answer = get(path);
        EXPECT_NE(answer.status, 200) << path;
        EXPECT_FALSE(has(answer, "secret")) << path;
    }
    EXPECT_EQ(get("/job/1/..").status, 404);
}

TEST_F(ListenWeb, ServesNothingThatOthersPutInAFilesPlace) {
    start();
    print(one);
    write_file(dir / "secret", "secret");
    fs::remove(jobs() / "job-0001/job.zpl");
    EXPECT_EQ(get("/job/1/job.zpl").status, 410);
    fs::create_symlink(dir / "secret", jobs() / "job-0001/job.zpl");
    EXPECT_EQ(get("/job/1/job.zpl").status, 410);
    fs::remove(jobs() / "job-0001/job.zpl");
    write_file(jobs() / "job-0001/job.zpl", "secret");
    EXPECT_EQ(get("/job/1/job.zpl").status, 410);
    EXPECT_EQ(get("/job/1/label-1.png").status, 200);
}

TEST_F(ListenWeb, AnswersOnlyLocalNamesOnLoopback) {
    start();
    for (const char* host :
         {"127.0.0.1", "localhost", "LocalHost:9180", "[::1]", "[::1]:80", "127.0.0.1:1"}) {
        EXPECT_EQ(get_from_host(host).status, 200) << host;
    }
    for (const char* host :
         {"evil.example", "evil.example:9180", "localhost.evil.example", "127.0.0.1.evil.example",
          "127.0.0.2", "[::2]", "", "[", "]", ":", "[::1", "192.168.1.1"}) {
        const HttpAnswer answer = get_from_host(host);
        EXPECT_EQ(answer.status, 421) << host;
        EXPECT_FALSE(has(answer, "Virtual label printer")) << host;
    }
}

TEST_F(ListenWeb, RefusesARequestThatNamesNoHost) {
    start();
    EXPECT_EQ(http(listener().web_port(), "GET / HTTP/1.0\r\n\r\n").status, 421);
    EXPECT_EQ(http(listener().web_port(), "GET / HTTP/1.1\r\n\r\n").status, 400);
}

TEST_F(ListenWeb, AnswersAnyNameElsewhereWhenAsked) {
    start({"--web-address", "0.0.0.0"});
    EXPECT_EQ(get_from_host("printer.example").status, 200);
}

TEST_F(ListenWeb, LetsABrowserKeepAPicture) {
    start();
    print(one);
    const std::string tag = get("/job/1/label-1.png").headers.at("etag");
    const HttpAnswer again = get("/job/1/label-1.png", "If-None-Match: " + tag + "\r\n");
    EXPECT_EQ(again.status, 304);
    EXPECT_EQ(again.body, "");
    EXPECT_EQ(get("/job/1/label-1.png", "If-None-Match: \"other\"\r\n").status, 200);
    EXPECT_NE(get("/job/1/job.zpl").headers.at("etag"), tag);
}

TEST_F(ListenWeb, OutlivesWhatIsNoRequest) {
    start();
    for (const std::string& bytes : {std::string("\0\1\2\r\n\r\n", 7), std::string("GET\r\n\r\n"),
                                     one, std::string("GET / HTTP/1.1\r\nHost: localhost\r\n")}) {
        Connection client(listener().web_port());
        client.send(bytes);
        EXPECT_EQ(get("/").status, 200);
    }
}

TEST_F(ListenWeb, RefusesARequestThatIsTooLong) {
    start();
    const std::string longest(100'000, 'a');
    EXPECT_EQ(get("/" + longest).status, 414);
    EXPECT_EQ(get("/", "X: " + longest + "\r\n").status, 431);
    EXPECT_EQ(get("/").status, 200);
}

TEST_F(ListenWeb, ServesThePageWhileAJobComes) {
    start();
    const Connection sender(listener().port());
    ASSERT_TRUE(sender.send(one));
    EXPECT_EQ(get("/").status, 200);
    EXPECT_FALSE(has(get("/"), "<article>"));
    sender.end();
    sender.read_all();
    EXPECT_TRUE(has(get("/"), "<article>"));
}

}  // namespace
}  // namespace kelp_test
