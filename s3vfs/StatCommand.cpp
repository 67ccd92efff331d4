#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <iostream>
#include <memory>

#include "Commands.hpp"
#include "Text.hpp"

namespace s3vfs {

namespace {

void printEntry(storage::cloudprovider::CloudClient& bucket, const S3Address& address) {
    const auto entry = bucket.stat(address.key);
    if (!entry) throw std::runtime_error("there is no such object");
    std::cout << "name      " << printable(entry->name) << "\nsize      " << entry->size << "\nmodified  "
              << timestamp(entry->lastModified) << "\n";
}

}  // namespace

void addStatCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("stat", "Print an object's size and time of modification");
    auto text = std::make_shared<std::string>();
    command->add_option("address", *text, "s3://BUCKET/KEY")->required();
    command->callback([&chosen, text] {
        const auto address = parseObjectAddress(*text);
        chosen = {"stat", address, [address](auto& bucket) { printEntry(bucket, address); }};
    });
}

}  // namespace s3vfs
