#include "support/process/Process.hpp"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

namespace testsupport {

namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

struct Pipe {
    Pipe() {
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) fail("pipe2");
    }
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    void closeEnd(std::size_t end) {
        if (ends[end] >= 0) ::close(ends[end]);
        ends[end] = -1;
    }

    std::string readAll() {
        std::string text;
        std::array<char, 4096> buffer{};
        ssize_t count = 0;
        while ((count = ::read(ends[0], buffer.data(), buffer.size())) > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
        return text;
    }

    std::array<int, 2> ends{-1, -1};
};

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> all;
    all.reserve(texts.size() + 1);
    for (auto& text : texts)
        all.push_back(text.data());
    all.push_back(nullptr);
    return all;
}

std::vector<std::string> settings(const Variables& environment) {
    std::vector<std::string> all;
    for (const auto& [name, value] : environment)
        all.push_back(std::string(name).append("=").append(value));
    return all;
}

/// A program, ready to be started: everything is made before the fork, since afterwards only
/// async-signal-safe calls are allowed.
class Start {
public:
    Start(std::vector<std::string> command, const Variables& environment, std::string folder)
        : command_(std::move(command)), settings_(settings(environment)), folder_(std::move(folder)) {}
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    /// The new process; its outputs go to these files. `prepare` runs in it at first, and may give it an
    /// input.
    template <class Prepare>
    pid_t with(int out, int err, Prepare&& prepare) const {
        const pid_t child = ::fork();
        if (child < 0) fail("fork");
        if (child != 0) return child;
        const int noInput = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        ::dup2(noInput, 0);
        prepare();
        become(out, err);
    }

private:
    [[noreturn]] void become(int out, int err) const {
        ::dup2(out, 1);
        ::dup2(err, 2);
        if (::chdir(folder_.c_str()) == 0) ::execve(arguments_[0], arguments_.data(), environment_.data());
        ::_exit(127);
    }

    std::vector<std::string> command_;
    std::vector<std::string> settings_;
    std::string folder_;
    std::vector<char*> arguments_ = pointers(command_);
    std::vector<char*> environment_ = pointers(settings_);
};

/// In a new process: ends it as soon as `parent` does.
void dieWith(pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(127);  // it died before it could be watched
}

void kill(pid_t child) {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

int waitFor(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) fail("waitpid");
    }
    return status;
}

int statusOf(int waited) {
    return WIFEXITED(waited) ? WEXITSTATUS(waited) : 128 + WTERMSIG(waited);
}

}  // namespace

Finished run(const std::vector<std::string>& command, const Variables& environment,
             const std::string& folder) {
    Pipe out;
    Pipe err;
    const pid_t child = Start(command, environment, folder).with(out.ends[1], err.ends[1], [] {});
    out.closeEnd(1);
    err.closeEnd(1);
    Finished finished{};
    std::thread errReader([&] { finished.err = err.readAll(); });
    finished.out = out.readAll();
    errReader.join();
    finished.status = statusOf(waitFor(child));
    return finished;
}

BackgroundProcess::BackgroundProcess(const std::vector<std::string>& command, const Variables& environment,
                                     const std::string& folder, const std::filesystem::path& log) {
    const Start start(command, environment, folder);
    const int output = ::open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (output < 0) fail("open");
    const pid_t parent = ::getpid();
    process_ = start.with(output, output, [parent] { dieWith(parent); });
    ::close(output);
}

BackgroundProcess::~BackgroundProcess() {
    if (process_ != 0) kill(process_);
}

bool BackgroundProcess::running() {
    if (process_ != 0 && ::waitpid(process_, nullptr, WNOHANG) == process_) process_ = 0;
    return process_ != 0;
}

void BackgroundProcess::signal(int number) const {
    if (process_ != 0) ::kill(process_, number);
}

int BackgroundProcess::wait() {
    return statusOf(waitFor(std::exchange(process_, 0)));
}

InteractiveProcess::InteractiveProcess(const std::vector<std::string>& command, const Variables& environment,
                                       const std::string& folder) {
    const Start start(command, environment, folder);
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) fail("socketpair");
    const auto [ours, its] = ends;
    const pid_t parent = ::getpid();
    process_ = start.with(its, STDERR_FILENO, [parent, input = its] {
        dieWith(parent);
        ::dup2(input, STDIN_FILENO);
    });
    ::close(its);
    socket_ = ours;
}

InteractiveProcess::~InteractiveProcess() {
    kill(process_);
    ::close(socket_);
}

std::string InteractiveProcess::ask(const std::string& line) {
    const std::string question = line + '\n';
    ::send(socket_, question.data(), question.size(), MSG_NOSIGNAL);
    std::string answer;
    for (char next = 0; ::recv(socket_, &next, 1, 0) == 1;) {
        if (next == '\n') return answer;
        answer += next;
    }
    throw std::runtime_error("the program ended instead of answering: " + line);
}

std::optional<std::string> installedProgram(const std::string& name) {
    for (const char* const folder : {"/usr/bin/", "/usr/sbin/", "/usr/local/bin/"}) {
        if (::access((folder + name).c_str(), X_OK) == 0) return folder + name;
    }
    return std::nullopt;
}

}  // namespace testsupport
