#include "support/Process.hpp"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <thread>

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

[[noreturn]] void become(char* const* arguments, char* const* environment, const char* folder, Pipe& out,
                         Pipe& err) {
    const int noInput = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::dup2(noInput, 0);
    ::dup2(out.ends[1], 1);
    ::dup2(err.ends[1], 2);
    if (::chdir(folder) == 0) ::execve(arguments[0], arguments, environment);
    ::_exit(127);
}

}  // namespace

Finished run(const std::vector<std::string>& command, const std::map<std::string, std::string>& environment,
             const std::string& folder) {
    auto arguments = command;
    std::vector<std::string> settings;
    for (const auto& [name, value] : environment)
        settings.push_back(name + "=" + value);
    // Made before the fork: afterwards only async-signal-safe calls are allowed.
    const auto argumentPointers = pointers(arguments);
    const auto settingPointers = pointers(settings);
    Pipe out;
    Pipe err;
    const pid_t child = ::fork();
    if (child < 0) fail("fork");
    if (child == 0) become(argumentPointers.data(), settingPointers.data(), folder.c_str(), out, err);
    out.closeEnd(1);
    err.closeEnd(1);
    Finished finished{};
    std::thread errReader([&] { finished.err = err.readAll(); });
    finished.out = out.readAll();
    errReader.join();
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) fail("waitpid");
    }
    finished.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return finished;
}

}  // namespace testsupport
