#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "Commands.hpp"
#include "Text.hpp"

namespace s3vfs {

namespace {

struct PutArguments {
    std::string file;
    std::string address;
};

void putFile(storage::cloudprovider::CloudClient& bucket, const std::string& file, const std::string& key) {
    if (!std::filesystem::is_regular_file(file)) {
        throw std::runtime_error("'" + printable(file) + "' is not a regular file");
    }
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("'" + printable(file) + "' can't be opened for reading");
    bucket.upload(key, in, std::filesystem::file_size(file));
}

}  // namespace

void addPutCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("put", "Store a file as an object");
    auto arguments = std::make_shared<PutArguments>();
    command->add_option("file", arguments->file, "a regular file")->required();
    command->add_option("address", arguments->address, "s3://BUCKET/KEY")->required();
    command->callback([&chosen, arguments] {
        const auto address = parseObjectAddress(arguments->address);
        const auto file = arguments->file;
        chosen = {"put", address, [=](auto& bucket) { putFile(bucket, file, address.key); }};
    });
}

}  // namespace s3vfs
