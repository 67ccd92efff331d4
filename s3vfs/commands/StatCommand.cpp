#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <iostream>
#include <memory>

#include "commands/Commands.hpp"
#include "commands/Entries.hpp"
#include "messages/Text.hpp"

namespace s3vfs {

namespace {

void printEntry(foundation::storage::provider::IProvider& bucket, const S3Address& address) {
    const auto entry = requireEntry(bucket, address.path());
    std::cout << "name      " << printable(address.key.empty() ? "/" : address.key) << "\n";
    if (isFolder(entry)) {
        std::cout << "kind      folder\n";
    } else {
        std::cout << "kind      file\nsize      " << entry.size << "\nmodified  "
                  << timestamp(entry.lastModified) << "\n";
    }
}

}  // namespace

void addStatCommand(CLI::App& app, Command& chosen) {
    auto* command =
        app.add_subcommand("stat", "Tell what is at an address: a file's size and time, or a folder");
    auto text = std::make_shared<std::string>();
    command->add_option("address", *text, "s3://BUCKET/KEY; without a key, whether the bucket can be used")
        ->required();
    command->callback([&chosen, text] {
        const auto address = parseS3Address(*text);
        chosen = onObject("stat", address, [address](auto& bucket) { printEntry(bucket, address); });
    });
}

}  // namespace s3vfs
