#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <fl/i18n.hpp>
#include <iomanip>
#include <iostream>
#include <memory>
#include <tuple>

#include "Interruption.hpp"
#include "commands/Commands.hpp"
#include "commands/Entries.hpp"
#include "messages/Text.hpp"

namespace s3vfs {

using foundation::storage::provider::Entry;
using foundation::storage::provider::IProvider;

namespace {

struct ListArguments {
    std::string address;
    bool recursive = false;
};

void printLine(const std::string& size, const std::string& time, const std::string& name) {
    std::cout << std::right << std::setw(12) << size << "  " << std::left << std::setw(20) << time << "  "
              << printable(name) << "\n";
}

void printFile(const Entry& file, const std::string& key) {
    printLine(std::to_string(file.size), timestamp(file.lastModified), key);
}

bool comesBefore(const Entry& a, const Entry& b) {
    return std::tie(a.name, a.kind) < std::tie(b.name, b.kind);
}

std::string withSlash(const std::string& folder) {
    return folder.empty() || folder.back() == '/' ? folder : folder + "/";
}

/// `prefix` is what the keys in the folder begin with. Returns whether there is anything in it.
bool printFolder(IProvider& bucket, const std::string& prefix, bool recursive) {
    throwIfInterrupted();
    auto entries = bucket.list(fl::i18n::to_ustring("/" + prefix));
    std::sort(entries.begin(), entries.end(), comesBefore);
    for (const Entry& entry : entries) {
        const std::string key = prefix + fl::i18n::to_string(entry.name);
        if (!isFolder(entry)) {
            printFile(entry, key);
        } else if (recursive) {
            printFolder(bucket, key + "/", recursive);
        } else {
            printLine("-", "-", key + "/");
        }
    }
    return !entries.empty();
}

void printListing(IProvider& bucket, const S3Address& address, bool recursive) {
    const bool found = printFolder(bucket, withSlash(address.key), recursive);
    if (found || address.key.empty()) return;
    const Entry entry = requireEntry(bucket, address.path());
    if (!isFolder(entry)) printFile(entry, address.key);
}

}  // namespace

void addListCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("ls", "List the files and folders in a folder");
    auto arguments = std::make_shared<ListArguments>();
    command->add_option("address", arguments->address, "s3://BUCKET/FOLDER; without a folder, the root")
        ->required();
    command->add_flag("-r,--recursive", arguments->recursive,
                      "list every file in it and in all folders below");
    command->callback([&chosen, arguments] {
        const auto address = parseS3Address(arguments->address);
        const bool recursive = arguments->recursive;
        chosen = onBucket("ls", address, [=](auto& bucket) { printListing(bucket, address, recursive); });
    });
}

}  // namespace s3vfs
