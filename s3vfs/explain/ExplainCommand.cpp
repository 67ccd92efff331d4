#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <iostream>
#include <memory>

#include "commands/Commands.hpp"
#include "explain/Sections.hpp"

namespace s3vfs {

using namespace explain;

namespace {

/// Whether the bucket could be asked.
bool explainBucketNamed(const std::string& bucket) {
    const auto credentials = explainCredentials();
    const Answers answers = ask(bucket, credentials.credentials);
    const auto& configuration = answers.configuration;
    for (const Section& section : {explainRegion(answers), credentials.section, explainProxy(answers),
                                   explainCertificates(configuration), explainRetries(configuration),
                                   explainEndpoint(configuration), explainBucket(answers)})
        print(std::cout, section);
    return credentials.usable && answers.location.IsSuccess();
}

}  // namespace

void addExplainCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand(
        "explain", "Tell where region, keys, proxy and certificates come from, and what the bucket says");
    auto text = std::make_shared<std::string>();
    command->add_option("address", *text, "s3://BUCKET")->required();
    command->callback([&chosen, text] {
        const auto address = parseS3Address(*text);
        chosen = {"explain", address, [address](auto&) { return explainBucketNamed(address.bucket); }};
    });
}

}  // namespace s3vfs
