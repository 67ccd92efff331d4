#include "integration/Gateway.hpp"

#include <array>
#include <chrono>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "integration/GatewayConfiguration.hpp"
#include "s3server/Client.hpp"
#include "support/servers/HeldPort.hpp"

namespace testsupport {

namespace {

constexpr const char* programs[] = {"monmaptool", "ceph", "ceph-mon", "ceph-osd", "radosgw", "radosgw-admin"};
constexpr const char* clusterId = "5d8f7a52-93c4-4a27-8a5e-1a54b7b0f3c1";
constexpr const char* storeId = "e0b7c7e9-57a1-4b0b-9b4a-6f1d0a2f7d10";
constexpr const char* region = "eu-west-3";
constexpr const char* accessKey = "gateway-access-key";
constexpr const char* secretKey = "gateway-secret-key";
constexpr std::chrono::seconds longestStart{60};

std::string filled(std::string_view pattern, const std::map<std::string, std::string>& values) {
    std::string text(pattern);
    for (const auto& [name, value] : values) {
        const auto place = "{" + name + "}";
        for (auto at = text.find(place); at != std::string::npos; at = text.find(place, at + value.size()))
            text.replace(at, place.size(), value);
    }
    return text;
}

std::string lastCharacters(const std::string& text) {
    constexpr std::size_t enough = 3000;
    return text.size() <= enough ? text : text.substr(text.size() - enough);
}

}  // namespace

std::string Gateway::missingProgram() {
    for (const char* const program : programs) {
        if (!installedProgram(program)) return program;
    }
    return {};
}

Gateway::Gateway() {
    writeConfiguration();
    startMonitor();
    startStore();
    startGateway();
}

Access Gateway::accessToNewBucket(Way way) {
    const auto bucket = "conformance-" + std::to_string(++buckets_);
    s3server::test::Client client(localEndpoint(Way::HttpPath, ports_.http));
    client.signAs(accessKey, secretKey, region);
    const auto answer = client.put("/" + bucket, "", {{"x-amz-content-sha256", "UNSIGNED-PAYLOAD"}});
    if (answer.status != 200) throw std::runtime_error("no bucket was made: " + answer.body + answer.failure);
    return {localEndpoint(way, overTls(way) ? ports_.https : ports_.http),
            region,
            bucket,
            {accessKey, secretKey, ""},
            authority_.caFile().string()};
}

Gateway::Ports Gateway::freePorts() {
    const ClosedPort monitor;
    const ClosedPort http;
    const ClosedPort https;
    return {monitor.number(), http.number(), https.number()};
}

void Gateway::writeConfiguration() {
    const auto [certificate, key] = authority_.issue({"127.0.0.1", std::string("*.") + localHostName});
    std::ofstream(folder_.path() / "ceph.conf")
        << filled(gatewayConfiguration, {{"folder", folder_.path().string()},
                                         {"monitor", std::to_string(ports_.monitor)},
                                         {"http", std::to_string(ports_.http)},
                                         {"https", std::to_string(ports_.https)},
                                         {"certificate", certificate.string()},
                                         {"key", key.string()},
                                         {"host", localHostName}});
    const std::ofstream emptyKeyring(folder_.path() / "keyring");
    for (const char* const data : {"mon", "osd", "rgw"})
        std::filesystem::create_directory(folder_.path() / data);
}

void Gateway::startMonitor() {
    const auto map = (folder_.path() / "monmap").string();
    runToItsEnd("monmaptool", {"--create", "--fsid", clusterId, "--addv", "a",
                               "[v2:127.0.0.1:" + std::to_string(ports_.monitor) + "]", map});
    runToItsEnd("ceph-mon", {"--mkfs", "-i", "a", "--monmap", map});
    monitor_ = inBackground("ceph-mon", {"-i", "a", "-f"});
}

void Gateway::startStore() {
    runToItsEnd("ceph", {"--connect-timeout", "30", "osd", "new", storeId, "0"});
    runToItsEnd("ceph-osd", {"-i", "0", "--mkfs", "--osd-uuid", storeId});
    store_ = inBackground("ceph-osd", {"-i", "0", "-f"});
}

void Gateway::startGateway() {
    runToItsEnd("radosgw-admin",
                {"user", "create", "--uid=conformance", "--display-name=conformance",
                 std::string("--access-key=") + accessKey, std::string("--secret-key=") + secretKey});
    runToItsEnd("radosgw-admin", {"zonegroup", "modify", std::string("--api-name=") + region});
    gateway_ = inBackground("radosgw", {"-n", "client.rgw", "-f"});
    waitUntilItAnswers();
}

void Gateway::waitUntilItAnswers() {
    const auto latest = std::chrono::steady_clock::now() + longestStart;
    s3server::test::Client client(localEndpoint(Way::HttpPath, ports_.http));
    while (client.get("/").status != 200) {
        if (!gateway_->running() || std::chrono::steady_clock::now() > latest)
            throw std::runtime_error("the gateway doesn't answer: " + endOfLog("radosgw"));
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

std::vector<std::string> Gateway::command(const std::string& program,
                                          std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), installedProgram(program).value());
    arguments.insert(arguments.end(), {"-c", (folder_.path() / "ceph.conf").string()});
    return arguments;
}

void Gateway::runToItsEnd(const std::string& program, const std::vector<std::string>& arguments) const {
    const auto finished =
        run(command(program, arguments), {{"PATH", "/usr/bin:/bin"}}, folder_.path().string());
    if (finished.status == 0) return;
    throw std::runtime_error(program + " failed: " + lastCharacters(finished.out + finished.err) +
                             endOfLog("ceph-mon"));
}

std::unique_ptr<BackgroundProcess> Gateway::inBackground(const std::string& program,
                                                         const std::vector<std::string>& arguments) const {
    // Debian 13's ceph-osd looks for its classes in lib/.../rados-classes, below the folder that it runs in.
    return std::make_unique<BackgroundProcess>(command(program, arguments), Variables{}, "/usr",
                                               folder_.path() / (program + ".log"));
}

std::string Gateway::endOfLog(const std::string& program) const {
    std::ostringstream text;
    text << std::ifstream(folder_.path() / (program + ".log")).rdbuf();
    return lastCharacters(text.str());
}

}  // namespace testsupport
