#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <iomanip>
#include <iostream>
#include <memory>

#include "Commands.hpp"
#include "Text.hpp"

namespace s3vfs {

namespace {

struct ListArguments {
    std::string address;
    bool recursive = false;
    int pageSize = 0;
};

void printLine(const std::string& size, const std::string& time, const std::string& name) {
    std::cout << std::right << std::setw(12) << size << "  " << std::left << std::setw(20) << time << "  "
              << printable(name) << "\n";
}

bool endsWith(const std::string& text, const std::string& ending) {
    return text.size() >= ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

void printEntry(const storage::cloudprovider::EntryInfo& entry, const std::string& delimiter) {
    const bool folder = entry.size == 0 && !delimiter.empty() && endsWith(entry.name, delimiter);
    if (folder) {
        printLine("-", "-", entry.name);
    } else {
        printLine(std::to_string(entry.size), timestamp(entry.lastModified), entry.name);
    }
}

void printPages(storage::cloudprovider::CloudClient& bucket, const std::string& prefix,
                const storage::cloudprovider::ListOptions& options) {
    std::string token;
    do {
        for (const auto& entry : bucket.list(prefix, token, options))
            printEntry(entry, options.Delimiter);
    } while (!token.empty());
}

}  // namespace

void addListCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("ls", "List the objects below a prefix, one folder level or all");
    auto arguments = std::make_shared<ListArguments>();
    command
        ->add_option("address", arguments->address, "s3://BUCKET/PREFIX; an empty prefix lists from the root")
        ->required();
    command->add_flag("-r,--recursive", arguments->recursive, "list every object, not folder by folder");
    command->add_option("--page-size", arguments->pageSize, "ask for at most so many entries in one request")
        ->check(CLI::Range(1, 1000));
    command->callback([&chosen, arguments] {
        const auto address = parseS3Address(arguments->address);
        const storage::cloudprovider::ListOptions options{arguments->recursive ? "" : "/",
                                                          arguments->pageSize};
        chosen = {"ls", address, [=](auto& bucket) { printPages(bucket, address.key, options); }};
    });
}

}  // namespace s3vfs
