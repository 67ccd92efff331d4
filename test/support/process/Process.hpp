#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace testsupport {

using Variables = std::map<std::string, std::string>;

struct Finished {
    int status;  ///< exit status; 128 + signal when it was killed by one
    std::string out;
    std::string err;
};

/// Runs a program to its end in `folder` with exactly this environment and no input. Throws
/// std::system_error when it can't be started.
Finished run(const std::vector<std::string>& command, const Variables& environment,
             const std::string& folder);

/// A program that runs in `folder` beside the test, without input, until this object's end kills it. It is
/// killed as well when the thread that started it ends, in whatever way.
class BackgroundProcess {
public:
    /// What it prints goes to the file `log`. Throws std::system_error when it can't be started.
    BackgroundProcess(const std::vector<std::string>& command, const Variables& environment,
                      const std::string& folder, const std::filesystem::path& log);
    ~BackgroundProcess();
    BackgroundProcess(const BackgroundProcess&) = delete;
    BackgroundProcess& operator=(const BackgroundProcess&) = delete;

    bool running();

    void signal(int number) const;

    /// Waits for its end; the status is as in Finished.
    int wait();

private:
    pid_t process_;  // 0 when it has ended
};

/// A program that answers each line with a line. It is killed like a BackgroundProcess. What it says of
/// errors goes where the test's go.
class InteractiveProcess {
public:
    /// Throws std::system_error when it can't be started.
    InteractiveProcess(const std::vector<std::string>& command, const Variables& environment,
                       const std::string& folder);
    ~InteractiveProcess();
    InteractiveProcess(const InteractiveProcess&) = delete;
    InteractiveProcess& operator=(const InteractiveProcess&) = delete;

    /// Waits for the answer. Throws std::runtime_error when the program ends instead.
    std::string ask(const std::string& line);

private:
    pid_t process_ = 0;
    int socket_ = -1;
};

/// Where the system has installed that program. The PATH isn't looked at, so that nobody's own version is
/// taken.
std::optional<std::string> installedProgram(const std::string& name);

}  // namespace testsupport
