#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "Client.hpp"
#include "support/plugin/HostileTexts.hpp"

namespace s3server::test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

/// The program s3server, run with these arguments.
class Program {
public:
    explicit Program(std::vector<std::string> arguments, std::vector<std::string> environment = {}) {
        arguments.insert(arguments.begin(), S3SERVER_PROGRAM);
        std::array<int, 2> out{};
        std::array<int, 2> errors{};
        if (::pipe2(out.data(), O_CLOEXEC) != 0 || ::pipe2(errors.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);
        const int failure = ::posix_spawn(&process_, S3SERVER_PROGRAM, &actions, nullptr,
                                          pointers(arguments).data(), pointers(environment).data());
        posix_spawn_file_actions_destroy(&actions);
        ::close(out[1]);
        ::close(errors[1]);
        out_ = out[0];
        errors_ = errors[0];
        if (failure != 0) throw std::runtime_error("can't start " S3SERVER_PROGRAM);
    }
    ~Program() {
        if (process_ != 0) {
            ::kill(process_, SIGKILL);
            ::waitpid(process_, nullptr, 0);
        }
        ::close(out_);
        ::close(errors_);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    std::string line() const {
        std::string text;
        for (char c = 0; ::read(out_, &c, 1) == 1 && c != '\n';)
            text += c;
        return text;
    }
    std::string endpoint() const {
        const std::string text = line();
        return text.substr(text.rfind(' ') + 1);
    }
    std::string errors() const {
        std::string text;
        for (char c = 0; ::read(errors_, &c, 1) == 1;)
            text += c;
        return text;
    }
    void send(int signal) const { ::kill(process_, signal); }
    /// Its exit status, -1 if a signal ended it.
    int wait() {
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    static std::vector<char*> pointers(std::vector<std::string>& texts) {
        std::vector<char*> pointers;
        pointers.reserve(texts.size() + 1);
        for (std::string& text : texts)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        return pointers;
    }

    pid_t process_ = 0;
    int out_ = -1;
    int errors_ = -1;
};

TEST(Program, SaysWhereItListensAndStopsOnASignal) {
    for (const int signal : {SIGTERM, SIGINT}) {
        Program program({"--port", "0"});
        EXPECT_THAT(program.line(), MatchesRegex("s3server listening on 127.0.0.1:[0-9]+"));
        program.send(signal);
        EXPECT_EQ(program.wait(), 0);
    }
}

TEST(Program, StartsWithItsBucketsAndFaults) {
    const Program program({"--no-auth", "--bucket", "demo:eu-west-3", "--bucket", "other", "--host-name",
                           "s3.test", "--fault", "503:ListBuckets"});
    Client client(program.endpoint());
    EXPECT_EQ(client.get("/").status, 503);
    EXPECT_THAT(client.get("/").elements("Name"), testing::ElementsAre("demo", "other"));
    EXPECT_EQ(client.head("/demo").header("x-amz-bucket-region"), "eu-west-3");
    EXPECT_EQ(client.head("/", {{"Host", "other.s3.test"}}).header("x-amz-bucket-region"), "us-east-1");
}

TEST(Program, TakesFaultsWhileItRuns) {
    const Program program(
        {"--no-auth", "--bucket", "demo", "--control-port", "0", "--fault", "reset:PutObject"});
    Client client(program.endpoint());
    const std::string told = program.line();
    EXPECT_THAT(told, MatchesRegex("s3server takes control requests on 127.0.0.1:[0-9]+"));
    Client control(told.substr(told.rfind(' ') + 1));
    EXPECT_EQ(client.get("/demo").status, 200);
    EXPECT_EQ(control.post("/faults", "503:ListObjects").body, "reset:PutObject\n503:ListObjects\n");
    EXPECT_EQ(client.get("/demo").status, 503);
    control.remove("/faults");
    EXPECT_EQ(client.put("/demo/k", "x").status, 200);
    EXPECT_EQ(control.get("/requests").body, "ListObjects 200 1\nListObjects 503 1\nPutObject 200 1\n");
}

TEST(Program, KeepsNoMoreThanItsMemory) {
    const Program program({"--no-auth", "--bucket", "demo", "--memory", "1MiB"});
    Client client(program.endpoint());
    EXPECT_EQ(client.put("/demo/k", std::string(900'000, 'x')).status, 200);
    const Answer refused = client.put("/demo/other", std::string(900'000, 'x'));
    EXPECT_EQ(refused.status, 507);
    EXPECT_EQ(refused.element("MaxStorage"), "1048576");
}

TEST(Program, TakesItsKeysFromTheEnvironment) {
    const Program program({"--bucket", "demo"},
                          {"S3SERVER_ACCESS_KEY=me", "S3SERVER_SECRET_KEY=very-secret"});
    Client client(program.endpoint());
    client.signAs("me", "very-secret", "us-east-1");
    EXPECT_EQ(client.get("/", {{"x-amz-content-sha256", "UNSIGNED-PAYLOAD"}}).status, 200);
    client.signAs("me", "other-secret", "us-east-1");
    EXPECT_EQ(client.get("/", {{"x-amz-content-sha256", "UNSIGNED-PAYLOAD"}}).status, 403);
}

/// No longer than the environment of a new process may be.
std::string fitting(const std::string& text) {
    return text.substr(0, 64UL * 1024);
}

TEST(Program, TakesAnySecretFromTheEnvironment) {
    for (const auto& text : testsupport::hostileTexts()) {
        SCOPED_TRACE(testsupport::shown(text));
        const std::string secret = fitting(text);
        Program program({"--log"}, {"S3SERVER_SECRET_KEY=" + secret});
        Client client(program.endpoint());
        client.signAs("s3server-access-key", secret.empty() ? "s3server-secret-key" : secret, "us-east-1");
        EXPECT_EQ(client.get("/", {{"x-amz-content-sha256", "UNSIGNED-PAYLOAD"}}).status, 200);
        program.send(SIGTERM);
        EXPECT_EQ(program.wait(), 0);
        EXPECT_THAT(program.errors(), MatchesRegex("1 GET / ListBuckets 200 [0-9]+ [0-9]+\n"));
    }
}

TEST(Program, TakesNoOtherAccessKeyThanTheEnvironments) {
    for (const auto& text : testsupport::hostileTexts()) {
        SCOPED_TRACE(testsupport::shown(text));
        const Program program({}, {"S3SERVER_ACCESS_KEY=" + fitting(text)});
        Client client(program.endpoint());
        client.signAs("s3server-access-key", "s3server-secret-key", "us-east-1");
        EXPECT_EQ(client.get("/", {{"x-amz-content-sha256", "UNSIGNED-PAYLOAD"}}).status,
                  text.empty() ? 200 : 403);
    }
}

TEST(Program, LogsALinePerRequestWithoutSignatures) {
    Program program({"--log", "--bucket", "demo"}, {"S3SERVER_SECRET_KEY=very-secret"});
    Client client(program.endpoint());
    client.get("/demo/k?X-Amz-Algorithm=AWS4-HMAC-SHA256&X-Amz-Signature=abcdef");
    client.get("/demo?list-type=2");
    program.send(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
    const std::string log = program.errors();
    EXPECT_THAT(log, HasSubstr("1 GET /demo/k?... GetObject 400 "));
    EXPECT_THAT(log, HasSubstr("1 GET /demo?list-type=2 ListObjectsV2 403 "));
    EXPECT_THAT(log, testing::Not(HasSubstr("abcdef")));
    EXPECT_THAT(log, testing::Not(HasSubstr("very-secret")));
}

struct BadUsage {
    std::vector<std::string> arguments;
    std::string complaint;
};

TEST(Program, RefusesBadUsageInOneLine) {
    const BadUsage cases[] = {
        {{"--nonsense"}, "--nonsense"},
        {{"--port", "99999"}, "99999"},
        {{"--fault", "explode"}, "'explode' is no kind of fault"},
        {{"--control-port", "99999"}, "99999"},
        {{"--control-address", "0.0.0.0"}, "--control-port"},
        {{"--memory", "lots"}, "lots"},
        {{"--memory", "-1"}, "'-1' is no size"},
        {{"--memory", "99999999999999999999"}, "is no size"},
        {{"--tls-cert", "a.pem"}, "--tls-key"},
        {{"--bucket", "demo", "--bucket", "demo"}, "'demo' exists"},
        {{"--bucket", ":eu-west-3"}, "bucket's name"},
        {{"--bucket", "Bad Name"}, "'Bad Name' can't be a bucket's name in S3"},
        {{"--bucket", "demo:"}, "'' can't be a region"},
        {{"--bucket", "demo:Eu West"}, "'Eu West' can't be a region"},
    };
    for (const auto& [arguments, complaint] : cases) {
        Program program(arguments);
        const std::string errors = program.errors();
        EXPECT_EQ(program.wait(), 2) << complaint;
        EXPECT_THAT(errors, MatchesRegex("s3server: [^\n]*\n"));
        EXPECT_THAT(errors, HasSubstr(complaint));
    }
}

TEST(Program, FailsInOneLineIfItCantListen) {
    Program program({"--address", "192.0.2.1"});
    const std::string errors = program.errors();
    EXPECT_EQ(program.wait(), 1);
    EXPECT_THAT(errors, MatchesRegex("s3server: can't listen on 192.0.2.1 port 0: [^\n]*\n"));
}

}  // namespace
}  // namespace s3server::test
