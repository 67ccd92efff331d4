#include <curl/curl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <regex>
#include <s3server/Server.hpp>
#include <sstream>

#include "cli/AmazonsPlace.hpp"
#include "support/process/Process.hpp"
#include "support/process/TemporaryFolder.hpp"
#include "support/servers/ServerEnvironment.hpp"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

/// A case is a folder that holds case.json:
///   arguments    what stands behind "s3vfs"; {server} is the server's host and port, {bundle} the
///                plug-in's bundle, {greeter} one whose component waits for something that nobody has
///   environment  variables beside the keys and the endpoint, which are always set; null takes one away. In
///                these and in home, {server}, {home} and {xff}, a byte that isn't UTF-8, are replaced.
///                Whatever begins with "pl4nted" is a secret, which must not be printed
///   home         files in the home folder, which is empty otherwise; {".aws/config": "content"}
///   status, out, err   what must come of it; err and out are compared whole after times are replaced by
///                {time}, the home folder by {home} and libcurl's words for a refused connection by
///                {refused}, or, with a leading "~", must contain what follows; a list must be contained
///                piece by piece, in this order
///   requests     what the server must have been asked, in order: "GetObject key, N bytes down, M bytes up"
///   objects      what bucket demo holds at first, beside the usual; {"key": "content"}
///   faults       failures planned on the server, in the words of its --fault option, or an answer by its
///                "status", "headers", "body" and "operation"
///   left         what bucket demo must hold afterwards, where it matters
///   amazon       true: the server is in Amazon's place, by a proxy and a certificate. No endpoint and no
///                region are set then
///   tunnels      what that proxy must have been asked for, in order: "HOST:PORT"
///   odd_key      true for a key with empty or dot segments. With an SDK that would send it as another key,
///                it must be refused instead, and the server be asked nothing
struct Case {
    std::string name;
    json content;
};

void PrintTo(const Case& tested, std::ostream* out) {
    *out << tested.name;
}

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const auto& entry : fs::directory_iterator(CASES_FOLDER)) {
        std::ifstream in(entry.path() / "case.json");
        cases.push_back({entry.path().filename().string(), json::parse(in)});
    }
    std::sort(cases.begin(), cases.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    return cases;
}

void replaceAll(std::string& text, const std::string& what, const std::string& by) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

std::string withoutTimes(const std::string& text) {
    return std::regex_replace(text, std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d(\.\d+)?Z)"), "{time}");
}

void expectPieces(const std::string& actual, const std::vector<std::string>& pieces) {
    std::size_t at = 0;
    for (const std::string& piece : pieces) {
        const auto found = actual.find(piece, at);
        ASSERT_NE(found, std::string::npos) << "'" << piece << "' is missing, or too late, in\n" << actual;
        at = found + piece.size();
    }
}

void expectText(const std::string& actual, const json& expected) {
    if (expected.is_array()) return expectPieces(actual, expected);
    const auto text = expected.get<std::string>();
    if (text.rfind('~', 0) == 0) {
        EXPECT_NE(actual.find(text.substr(1)), std::string::npos) << actual;
    } else {
        EXPECT_EQ(actual, text);
    }
}

s3server::Fault faultFrom(const json& fault) {
    if (fault.is_string()) return s3server::Fault::parse(fault.get<std::string>());
    s3server::Headers headers;
    for (const auto& [name, value] : fault.at("headers").items())
        headers.emplace_back(name, value);
    return s3server::Fault::reply(fault.at("status"), headers, fault.at("body")).on(fault.at("operation"));
}

class CommandLine : public ::testing::TestWithParam<Case> {
protected:
    CommandLine() {
        if (amazon) amazon->lead(server);
        server.createBucket("demo", "eu-west-3");
        server.putObject("demo", "hello.txt", "hello world");
        const json objects = content().value("objects", json::object());
        for (const auto& [key, value] : objects.items())
            server.putObject("demo", key, value);
        const json faults = content().value("faults", json::array());
        for (const auto& fault : faults)
            server.plan(faultFrom(fault));
        const json files = content().value("home", json::object());
        for (const auto& [name, text] : files.items())
            home.write(name, filledIn(text));
    }

    std::string filledIn(std::string text) const {
        replaceAll(text, "{server}", server.endpoint());
        replaceAll(text, "{home}", home.path().string());
        replaceAll(text, "{bundle}", BUNDLE_FILE);
        replaceAll(text, "{greeter}", GREETER_BUNDLE);
        replaceAll(text, "{xff}", "\xFF");
        return text;
    }

    std::string withoutVolatileText(std::string text) const {
        replaceAll(text, server.endpoint(), "{server}");
        replaceAll(text, home.path().string(), "{home}");
        replaceAll(text, BUNDLE_FILE, "{bundle}");
        replaceAll(text, GREETER_BUNDLE, "{greeter}");
        replaceAll(text, curl_easy_strerror(CURLE_COULDNT_CONNECT), "{refused}");
        return withoutTimes(text);
    }

    const json& content() const { return GetParam().content; }

    std::vector<std::string> command() const {
        std::vector<std::string> words{S3VFS_PROGRAM};
        for (const auto& word : content().at("arguments").get<std::vector<std::string>>())
            words.push_back(filledIn(word));
        return words;
    }

    testsupport::Variables environment() const {
        auto variables = testsupport::leadingTo(server);
        variables["AWS_REGION"] = "eu-west-3";
        variables["ZR_AWS_RETRYTIMEMS"] = "0";
        variables["HOME"] = home.path().string();
        if (amazon) amazon->changeVariables(variables);
        const json changes = content().value("environment", json::object());
        for (const auto& [name, value] : changes.items()) {
            variables.erase(name);
            if (!value.is_null()) variables[name] = filledIn(value);
        }
        return variables;
    }

    std::vector<std::string> requests() const {
        std::vector<std::string> texts;
        for (const auto& request : server.requests()) {
            texts.push_back(request.operation + " " + request.key + ", " +
                            std::to_string(request.responseBytes) + " bytes down, " +
                            std::to_string(request.bodyBytes) + " bytes up");
        }
        return texts;
    }

    void expectRefusedKey(const testsupport::Finished& finished) const {
        expectPieces(finished.err, {": cannot address the key \"", "\": ", "this AWS SDK would "});
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(json(requests()), json::array());
        if (amazon) {
            EXPECT_EQ(json(amazon->tunnels()), json::array());
        }
    }

    static std::unique_ptr<testsupport::AmazonsPlace> amazonIfWanted() {
        return GetParam().content.value("amazon", false) ? std::make_unique<testsupport::AmazonsPlace>()
                                                         : nullptr;
    }

    const std::unique_ptr<testsupport::AmazonsPlace> amazon = amazonIfWanted();
    s3server::Server server{amazon ? amazon->serverOptions() : s3server::Options()};
    testsupport::TemporaryFolder home;
};

/// With an SDK that sends such keys as others: the real one, or the stand-in made so.
class CommandLineWithOddKeys : public CommandLine {};

std::vector<Case> casesWithOddKeys() {
    auto cases = allCases();
    cases.erase(std::remove_if(cases.begin(), cases.end(),
                               [](const Case& each) { return !each.content.value("odd_key", false); }),
                cases.end());
    return cases;
}

std::string nameOf(const ::testing::TestParamInfo<Case>& tested) {
    auto name = tested.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

}  // namespace

TEST_P(CommandLineWithOddKeys, RefusesThemBeforeAnythingIsSent) {
    const auto keysBefore = server.keys("demo");
    auto variables = environment();
    variables["LD_PRELOAD"] = SHORTENED_PATHS;
    expectRefusedKey(
        testsupport::run(command(), variables, (fs::path(CASES_FOLDER) / GetParam().name).string()));
    EXPECT_EQ(server.keys("demo"), keysBefore);
}

INSTANTIATE_TEST_SUITE_P(Cases, CommandLineWithOddKeys, ::testing::ValuesIn(casesWithOddKeys()), nameOf);

TEST_P(CommandLine, DoesAndSaysWhatTheCaseTells) {
    const auto keysBefore = server.keys("demo");
    const auto finished =
        testsupport::run(command(), environment(), (fs::path(CASES_FOLDER) / GetParam().name).string());
    if (!KEYS_ARE_LITERAL && content().value("odd_key", false) && finished.status == 2) {
        expectRefusedKey(finished);
        EXPECT_EQ(server.keys("demo"), keysBefore);
        return;
    }
    EXPECT_EQ(finished.status, content().value("status", 0));
    expectText(withoutVolatileText(finished.out), content().value("out", json("")));
    expectText(withoutVolatileText(finished.err), content().value("err", json("")));
    if (content().contains("requests")) {
        EXPECT_EQ(json(requests()), content().at("requests"));
    }
    if (content().contains("left")) {
        EXPECT_EQ(json(server.keys("demo")), content().at("left"));
    }
    if (content().contains("tunnels")) {
        EXPECT_EQ(json(amazon->tunnels()), content().at("tunnels"));
    }
    EXPECT_EQ(server.plannedFaultsLeft(), 0u);
    for (const char* secret : {"s3server-secret-key", "Signature=", "pl4nted"}) {
        EXPECT_EQ((finished.out + finished.err).find(secret), std::string::npos) << secret;
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, CommandLine, ::testing::ValuesIn(allCases()), nameOf);
