#include <pthread.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "s3server/Server.hpp"

namespace {

constexpr int badUsage = 2;

constexpr const char* faultHelp = R"(
Faults: ACTION[=VALUE][+SKIP][*TIMES][:OPERATION][@BUCKET[/KEY]]
  503                  answer that status, 300 to 999, with the usual error code; 503=CODE with that one
  reply=STATUS,BODY    answer that status, 200 to 999, with that body, percent-encoded
  error-in-200=CODE    an Error document under status 200
  cut=BYTES            end the connection after so many bytes of the body
  delay=MILLISECONDS   answer later
  stall                don't answer
  reset                reset the connection before the answer
  reset-after-headers  reset it after the head of the answer
  close                perform the operation, then close without an answer
  +SKIP lets that many requests through first; *TIMES is how many requests it is for, one by default.
  Examples: "503*2:GetObject"  "cut=1000+1:GetObject@demo/big.bin"  "delay=250*100"

Control requests, with --control-port PORT, are HTTP requests that change faults while the server runs:
  GET /faults          what is planned, a fault a line
  POST /faults         plan the faults of the body, too, one a line; PUT plans them instead
  DELETE /faults       plan none, and let the requests go that a stall holds
  GET /requests        how many there were: lines of operation, status, number; DELETE counts from 0
  Examples: curl -d "503*2:GetObject" http://127.0.0.1:PORT/faults
            curl -X DELETE http://127.0.0.1:PORT/faults

Without a bucket's region it is us-east-1. The keys may come from the environment, as S3SERVER_ACCESS_KEY
and S3SERVER_SECRET_KEY, where other users of the machine don't see them.)";

struct Arguments {
    s3server::Options options;
    std::vector<std::string> buckets;
    std::vector<std::string> hostNames;
    std::vector<s3server::Fault> faults;
    s3server::TlsFiles tls;
    s3server::Credentials credentials = s3server::defaultCredentials;
    bool noAuth = false;
    bool log = false;
};

std::string parsedFaults(const std::vector<std::string>& texts, std::vector<s3server::Fault>& faults) {
    for (const std::string& text : texts) {
        try {
            faults.push_back(s3server::Fault::parse(text));
        } catch (const std::invalid_argument& error) {
            return "--fault " + text + ": " + error.what();
        }
    }
    return {};
}

/// The target without its query if that is a presigned one, which is as good as a key.
std::string shownTarget(const std::string& target) {
    const auto query = target.find('?');
    const bool presigned = query != std::string::npos && target.find("X-Amz-", query) != std::string::npos;
    return presigned ? target.substr(0, query) + "?..." : target;
}

void printRequest(const s3server::RequestRecord& request) {
    std::clog << request.connection << ' ' << request.method << ' ' << shownTarget(request.target) << ' '
              << (request.operation.empty() ? "-" : request.operation) << ' ' << request.status << ' '
              << request.bodyBytes << ' ' << request.responseBytes << std::endl;
}

/// What CLI11 reads as a number without a sign wraps around when it has one, or too many digits.
std::string refuseNoNumber(const std::string& text) {
    const auto digits = std::min(text.find_first_not_of("0123456789"), text.size());
    return digits >= 1 && digits <= 18 ? "" : "'" + text + "' is no size";
}

void define(CLI::App& app, Arguments& arguments, std::vector<std::string>& faults) {
    app.add_option("--address", arguments.options.address, "IP address to listen on")->capture_default_str();
    app.add_option("--port", arguments.options.port, "port to listen on, 0 for any")->capture_default_str();
    app.add_option("--bucket", arguments.buckets, "NAME[:REGION] of a bucket to start with; may be repeated");
    app.add_option("--host-name", arguments.hostNames,
                   "BUCKET.NAME addresses a bucket, too; may be repeated");
    auto* const certificate =
        app.add_option("--tls-cert", arguments.tls.certificateChainFile, "PEM certificate chain, for HTTPS");
    auto* const key = app.add_option("--tls-key", arguments.tls.privateKeyFile, "PEM private key, for HTTPS");
    certificate->needs(key);
    key->needs(certificate);
    app.add_option("--access-key", arguments.credentials.accessKey, "access key to accept")
        ->envname("S3SERVER_ACCESS_KEY")
        ->capture_default_str();
    app.add_option("--secret-key", arguments.credentials.secretKey, "its secret key")
        ->envname("S3SERVER_SECRET_KEY");
    app.add_option("--memory", arguments.options.memoryLimit,
                   "most bytes to keep, such as 512MiB; what would go beyond is refused with 507 "
                   "InsufficientStorage; three quarters of the machine's memory unless given")
        ->transform(CLI::AsSizeValue(true))
        ->transform(CLI::Validator(refuseNoNumber, ""));
    app.add_flag("--no-auth", arguments.noAuth, "accept every request, signed or not");
    app.add_option("--fault", faults, "something that is to go wrong, see below; may be repeated");
    auto* const controlPort =
        app.add_option("--control-port", arguments.options.controlPort,
                       "port to take control requests on, 0 for any, see below; none unless given");
    app.add_option("--control-address", arguments.options.controlAddress,
                   "IP address of that port; whoever can connect to it may plan faults")
        ->needs(controlPort)
        ->capture_default_str();
    app.add_flag("--log", arguments.log,
                 "write a line per request to standard error: connection, method, target, operation, status, "
                 "bytes in, bytes out");
    app.footer(faultHelp);
}

void addBucket(s3server::Server& server, const std::string& text) {
    const auto colon = text.find(':');
    const std::string region = colon == std::string::npos ? "us-east-1" : text.substr(colon + 1);
    server.createBucket(text.substr(0, colon), region);
}

s3server::Options optionsOf(const Arguments& arguments) {
    s3server::Options options = arguments.options;
    options.hostNames.insert(options.hostNames.end(), arguments.hostNames.begin(), arguments.hostNames.end());
    options.credentials = {arguments.credentials};
    options.checkSignatures = !arguments.noAuth;
    if (!arguments.tls.certificateChainFile.empty()) options.tls = arguments.tls;
    if (arguments.log) options.onRequest = printRequest;
    options.rememberedRequests = 0;  // nobody here asks for them
    return options;
}

sigset_t stopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

void serve(const Arguments& arguments) {
    // Blocked before any thread starts, so that only sigwait() sees them.
    const sigset_t signals = stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    s3server::Server server(optionsOf(arguments));
    for (const std::string& bucket : arguments.buckets)
        addBucket(server, bucket);
    for (const s3server::Fault& fault : arguments.faults)
        server.plan(fault);
    std::cout << "s3server listening on " << server.endpoint() << std::endl;
    if (arguments.options.controlPort)
        std::cout << "s3server takes control requests on " << server.controlEndpoint() << std::endl;
    int signal = 0;
    sigwait(&signals, &signal);
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("An S3 server that keeps everything in memory.", "s3server");
    Arguments arguments;
    std::vector<std::string> faults;
    define(app, arguments, faults);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        std::cerr << "s3server: " << error.what() << '\n';
        return badUsage;
    }
    if (const std::string wrong = parsedFaults(faults, arguments.faults); !wrong.empty()) {
        std::cerr << "s3server: " << wrong << '\n';
        return badUsage;
    }
    try {
        serve(arguments);
        return 0;
    } catch (const std::invalid_argument& error) {
        std::cerr << "s3server: " << error.what() << '\n';
        return badUsage;
    } catch (const std::exception& error) {
        std::cerr << "s3server: " << error.what() << '\n';
        return 1;
    }
}
