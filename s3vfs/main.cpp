#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cerrno>
#include <cstdlib>
#include <foundation/log/stream_sink.hpp>
#include <iostream>
#include <optional>
#include <storage/cloudprovider/keyCheck.hpp>
#include <system_error>

#include "Interruption.hpp"
#include "commands/Commands.hpp"
#include "commands/LogLevels.hpp"
#include "framework/AwsSdk.hpp"
#include "framework/ServiceFramework.hpp"
#include "messages/FailureLog.hpp"
#include "messages/FailureText.hpp"
#include "messages/S3Answer.hpp"
#include "messages/Text.hpp"
#include "messages/UsageError.hpp"

namespace {

constexpr int success = 0;
constexpr int failed = 1;
constexpr int badUsage = 2;

struct Invocation {
    std::string endpoint;
    std::string region;
    std::string bundle;
    unsigned logLevels = 0;
    s3vfs::Command command;
};

// Before any thread is started.
void setVariable(const char* name, const std::string& value) {
    if (value.empty()) return;
    if (::setenv(name, value.c_str(), 1) != 0)  // NOLINT(concurrency-mt-unsafe)
        throw std::system_error(errno, std::generic_category(), name);
}

int report(const s3vfs::Command& command, const std::string& what) {
    const std::string subject = command.address ? " " + s3vfs::printable(command.address->text()) : "";
    std::cerr << "s3vfs: " << command.name << subject << ": " << what << "\n";
    return failed;
}

// What the plug-in calls a bad region may be one, or a bucket that names none, or something else altogether.
bool blamesRegion(const storage::cloudprovider::CloudException& failure) {
    return failure.context() && failure.context()->text() == u"bad_region";
}

int reportFailedRequest(const s3vfs::Command& command, const storage::cloudprovider::CloudException& failure,
                        const s3vfs::FailureLog& failures) {
    report(command, s3vfs::describe(failure));
    const auto answer = s3vfs::describeS3Answer(failures.latest());
    if (!answer.empty()) std::cerr << "s3vfs: " << answer << "\n";
    if (command.address && (answer.empty() || blamesRegion(failure)))
        std::cerr << "s3vfs: see s3vfs explain s3://" << s3vfs::printable(command.address->bucket) << "\n";
    return failed;
}

int run(const Invocation& invocation) {
    const s3vfs::FailureLog failures;
    // The failure record is always made, since it alone holds S3's own words.
    s3vfs::enableLogLevels(invocation.logLevels | s3vfs::failedRequestLevel);
    std::optional<foundation::log::StreamSink> shown;
    if (invocation.logLevels != 0)
        shown.emplace(foundation::log::addStreamSink(std::cerr, invocation.logLevels));
    const auto& command = invocation.command;
    // Ends after the handlers below: what they are given may be the bundle's.
    s3vfs::ServiceFramework framework(invocation.bundle);
    try {
        const bool wentWell = command.run(framework);
        std::cout.flush();
        if (!std::cout) return report(command, "standard output could not be written");
        return wentWell ? success : failed;
    } catch (const s3vfs::Interrupted&) {
        return failed;
    } catch (const storage::cloudprovider::CloudException& failure) {
        return reportFailedRequest(command, failure, failures);
    } catch (const storage::cloudprovider::UnaddressableKey& mistake) {
        report(command, s3vfs::printable(mistake.what()));
        return badUsage;
    } catch (const foundation::storage::provider::Exception& failure) {
        return report(command, s3vfs::describe(failure));
    } catch (const fl::i18n::conversion_error& failure) {
        return report(command, s3vfs::describe(failure));
    } catch (const std::exception& failure) {
        return report(command, s3vfs::printable(failure.what()));
    }
}

int runInterruptibly(const Invocation& invocation) {
    const s3vfs::Interruption interruption(&s3vfs::AwsSdk::shutDown);
    const int status = run(invocation);
    return interruption.status(status);
}

void declareOptions(CLI::App& app, Invocation& invocation) {
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--endpoint", invocation.endpoint, "URL of the S3 service; sets ZR_AWS_ENDPOINT_OVERRIDE");
    app.add_option("--region", invocation.region, "region of the bucket; sets AWS_DEFAULT_REGION");
    app.add_option("--bundle", invocation.bundle, "file of the plug-in; else the one beside this program");
    app.add_option_function<std::string>(
        "--log-levels", [&](const std::string& text) { invocation.logLevels = s3vfs::parseLogLevels(text); },
        "show diagnostic records on standard error: all, or numbers like 2,32,64,512");
    app.footer(
        "Region, keys, proxy and certificates come from the environment and the files in ~/.aws, "
        "as they do in the host application.");
    s3vfs::addStatCommand(app, invocation.command);
    s3vfs::addListCommand(app, invocation.command);
    s3vfs::addCatCommand(app, invocation.command);
    s3vfs::addPutCommand(app, invocation.command);
    s3vfs::addRemoveCommand(app, invocation.command);
    s3vfs::addBundleCommand(app, invocation.command);
    s3vfs::addExplainCommand(app, invocation.command);
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
        setVariable("ZR_AWS_ENDPOINT_OVERRIDE", invocation.endpoint);
        setVariable("AWS_DEFAULT_REGION", invocation.region);
        return runInterruptibly(invocation);
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
