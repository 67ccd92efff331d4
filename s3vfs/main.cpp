#include <aws/core/Aws.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <fl/i18n.hpp>
#include <foundation/log/diagnostic_logger.hpp>
#include <foundation/log/stream_sink.hpp>
#include <iostream>
#include <optional>
#include <storage/cloudprovider/CloudException.hpp>

#include "Commands.hpp"
#include "Connection.hpp"
#include "DiagnosticRecord.hpp"
#include "FailureLog.hpp"
#include "LogLevels.hpp"
#include "S3Answer.hpp"
#include "Text.hpp"
#include "UsageError.hpp"

namespace {

constexpr int success = 0;
constexpr int failed = 1;
constexpr int badUsage = 2;

constexpr const char* clientChannel = "storage::s3provider::S3Client";

struct Sdk {
    Sdk() { Aws::InitAPI(options); }
    ~Sdk() { Aws::ShutdownAPI(options); }
    Sdk(const Sdk&) = delete;
    Sdk& operator=(const Sdk&) = delete;

    Aws::SDKOptions options;
};

struct Invocation {
    s3vfs::Endpoint endpoint;
    unsigned logLevels = 0;
    s3vfs::Command command;
};

std::string exceptionText(const storage::cloudprovider::CloudException& failure) {
    if (!failure.context()) return failure.what();
    return std::string(failure.what()) + " (" + fl::i18n::ustring_to_utf8(failure.context()->text()) + ")";
}

int report(const s3vfs::Command& command, const std::string& what) {
    std::cerr << "s3vfs: " << command.name << " " << s3vfs::printable(command.address.text()) << ": " << what
              << "\n";
    return failed;
}

int run(const Invocation& invocation) {
    const Sdk sdk;
    const s3vfs::FailureLog failures;
    // The failure record is always made, since it alone holds S3's own words.
    foundation::log::setEnabledLevels(clientChannel,
                                      invocation.logLevels | storage::s3provider::LogFailedRequests);
    std::optional<foundation::log::StreamSink> shown;
    if (invocation.logLevels != 0)
        shown.emplace(foundation::log::addStreamSink(std::cerr, invocation.logLevels));
    const auto& command = invocation.command;
    try {
        const auto bucket = s3vfs::openBucket(command.address.bucket, invocation.endpoint);
        command.action(*bucket);
        std::cout.flush();
        return std::cout ? success : report(command, "standard output could not be written");
    } catch (const storage::cloudprovider::CloudException& failure) {
        report(command, exceptionText(failure));
        const auto answer = s3vfs::describeS3Answer(failures.latest());
        if (!answer.empty()) std::cerr << "s3vfs: " << answer << "\n";
        return failed;
    } catch (const std::exception& failure) {
        return report(command, s3vfs::printable(failure.what()));
    }
}

void declareOptions(CLI::App& app, Invocation& invocation) {
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--endpoint", invocation.endpoint.address,
                   "URL of the S3 service; else ZR_AWS_ENDPOINT_OVERRIDE, else Amazon's");
    app.add_option("--region", invocation.endpoint.region,
                   "region of the bucket; else AWS_DEFAULT_REGION, else AWS_REGION, else us-east-1");
    app.add_option_function<std::string>(
        "--log-levels", [&](const std::string& text) { invocation.logLevels = s3vfs::parseLogLevels(text); },
        "show diagnostic records on standard error: all, or numbers like 2,32,64,512");
    app.footer("Keys come from AWS_ACCESS_KEY_ID, AWS_SECRET_ACCESS_KEY and AWS_SESSION_TOKEN only.");
    s3vfs::addStatCommand(app, invocation.command);
    s3vfs::addListCommand(app, invocation.command);
    s3vfs::addCatCommand(app, invocation.command);
    s3vfs::addPutCommand(app, invocation.command);
    s3vfs::addRemoveCommand(app, invocation.command);
}

int complain(const std::string& what) {
    std::cerr << "s3vfs: " << what << "\n";
    return badUsage;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Files in Amazon S3, through the S3 storage provider", "s3vfs");
    try {
        Invocation invocation;
        declareOptions(app, invocation);
        app.parse(argc, argv);
        invocation.endpoint = s3vfs::completeFromEnvironment(invocation.endpoint);
        return run(invocation);
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& mistake) {
        return complain(s3vfs::printable(mistake.what()) + "; see s3vfs --help");
    } catch (const s3vfs::UsageError& mistake) {
        return complain(mistake.what());
    } catch (const std::exception& failure) {
        std::cerr << "s3vfs: " << s3vfs::printable(failure.what()) << "\n";
        return failed;
    }
}
