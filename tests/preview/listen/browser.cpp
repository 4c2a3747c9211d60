#include "tests/preview/listen/browser.h"

#include <cups/http.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <vector>

#include "tests/spooler/wait_until.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

constexpr int kAnswerLimit = 60'000;  // milliseconds, to end a test that hangs

// In the child, between fork and exec: system calls only. The browser reads commands from
// descriptor 3 and answers on 4.
void become(char* const* command, char* const* environment, const char* log, int commands,
            int answers) {
    setsid();  // the browser's own processes end with it, as one group
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int output = open(log, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const int nothing = open("/dev/null", O_RDONLY);
    // out of the way first: one may be where the other goes
    const int from = fcntl(commands, F_DUPFD, 10);
    const int to = fcntl(answers, F_DUPFD, 10);
    if (output < 0 || nothing < 0 || dup2(nothing, STDIN_FILENO) < 0 ||
        dup2(output, STDOUT_FILENO) < 0 || dup2(output, STDERR_FILENO) < 0 || dup2(from, 3) < 0 ||
        dup2(to, 4) < 0) {
        return;
    }
    close(from);
    close(to);
    execvpe(command[0], command, environment);
}

std::array<Descriptor, 2> make_pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe2");
    }
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

}  // namespace

Browser::Browser(const std::filesystem::path& folder) : folder_(folder) {
    std::filesystem::create_directories(folder / "profile");
    std::vector<std::string> command = {"chromium",
                                        "--headless",
                                        "--no-sandbox",
                                        "--disable-gpu",
                                        "--disable-dev-shm-usage",
                                        "--disable-background-networking",
                                        "--disable-component-update",
                                        "--disable-crash-reporter",
                                        "--disable-extensions",
                                        "--disable-sync",
                                        "--no-first-run",
                                        "--no-proxy-server",
                                        "--force-device-scale-factor=1",
                                        "--hide-scrollbars",
                                        "--window-size=1100,900",
                                        "--remote-debugging-pipe",
                                        "--user-data-dir=" + (folder / "profile").string()};
    const std::string home = folder.string();
    std::vector<std::string> environment = {"PATH=/usr/local/bin:/usr/bin:/bin",
                                            "HOME=" + home,
                                            "TMPDIR=" + home,
                                            "XDG_CONFIG_HOME=" + home,
                                            "XDG_CACHE_HOME=" + home,
                                            "XDG_RUNTIME_DIR=" + home,
                                            "LANG=C.UTF-8"};
    const std::vector<char*> command_pointers = pointers(command);
    const std::vector<char*> environment_pointers = pointers(environment);
    const std::string log = folder / "log";
    auto to_browser = make_pipe();
    auto from_browser = make_pipe();
    process_ = fork();
    if (process_ < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (process_ == 0) {
        become(command_pointers.data(), environment_pointers.data(), log.c_str(),
               to_browser[0].get(), from_browser[1].get());
        _exit(127);
    }
    commands_ = std::move(to_browser[1]);
    answers_ = std::move(from_browser[0]);
}

Browser::~Browser() {
    commands_.reset();  // it ends with its commands
    const auto ended = [&] { return waitpid(process_, nullptr, WNOHANG) == process_; };
    const bool by_itself = wait_until(ended, std::chrono::seconds(10));
    kill(-process_, SIGKILL);
    if (!by_itself) {
        waitpid(process_, nullptr, 0);
    }
    // its helpers may still write to its folder, which is to go
    wait_until([&] { return kill(-process_, 0) != 0; }, std::chrono::seconds(10));
}

void Browser::fail(const std::string& what) const {
    const std::filesystem::path log = folder_ / "log";
    throw std::runtime_error(what + "; it takes the package chromium. It said:\n" +
                             (std::filesystem::exists(log) ? read_file(log) : std::string()));
}

std::string Browser::next_message() {
    std::size_t end = 0;
    std::array<char, 65536> buffer;
    while ((end = received_.find('\0')) == std::string::npos) {
        pollfd event{answers_.get(), POLLIN, 0};
        if (poll(&event, 1, kAnswerLimit) <= 0) {
            fail("the browser does not answer");
        }
        const ssize_t count = ::read(answers_.get(), buffer.data(), buffer.size());
        if (count <= 0) {
            fail("the browser has ended");
        }
        received_.append(buffer.data(), static_cast<std::size_t>(count));
    }
    std::string message = received_.substr(0, end);
    received_.erase(0, end + 1);
    return message;
}

nlohmann::json Browser::call(const std::string& method, const nlohmann::json& parameters) {
    nlohmann::json command = {{"id", ++last_id_}, {"method", method}, {"params", parameters}};
    if (!session_.empty()) {
        command["sessionId"] = session_;
    }
    const std::string text = command.dump() + '\0';
    std::signal(SIGPIPE, SIG_IGN);
    if (write(commands_.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        fail("the browser takes no commands");
    }
    while (true) {
        const nlohmann::json message = nlohmann::json::parse(next_message());
        if (message.value("id", 0) == last_id_) {
            return message;
        }
    }
}

void Browser::open(const std::string& url) {
    const nlohmann::json target = call("Target.createTarget", {{"url", url}});
    const nlohmann::json attached =
        call("Target.attachToTarget",
             {{"targetId", target.at("result").at("targetId")}, {"flatten", true}});
    session_ = attached.at("result").at("sessionId");
}

std::optional<nlohmann::json> Browser::evaluate(const std::string& expression) {
    const nlohmann::json answer =
        call("Runtime.evaluate",
             {{"expression", expression}, {"returnByValue", true}, {"awaitPromise", true}});
    if (!answer.contains("result") || answer["result"].contains("exceptionDetails")) {
        return std::nullopt;
    }
    return answer["result"]["result"].value("value", nlohmann::json());
}

std::string Browser::screenshot() {
    const std::string encoded =
        call("Page.captureScreenshot", {{"format", "png"}}).at("result").at("data");
    std::string png(encoded.size(), '\0');
    int size = static_cast<int>(png.size());
    httpDecode64_2(png.data(), &size, encoded.c_str());
    png.resize(static_cast<std::size_t>(size));
    return png;
}

}  // namespace kelp_test
