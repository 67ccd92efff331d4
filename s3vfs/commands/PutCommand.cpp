#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <vector>

#include "Interruption.hpp"
#include "commands/Commands.hpp"
#include "messages/Text.hpp"

namespace s3vfs {

using foundation::storage::provider::IProvider;
using foundation::storage::provider::IWriter;

namespace {

constexpr std::size_t uploadPiece = std::size_t{1} << 20U;

struct PutArguments {
    std::string file;
    std::string address;
};

void copy(std::istream& in, IWriter& out) {
    std::vector<char> piece(uploadPiece);
    while (in) {
        throwIfInterrupted();
        in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        out.write(piece.data(), static_cast<std::size_t>(in.gcount()));
    }
}

void putFile(IProvider& bucket, const std::string& file, const std::u16string& path) {
    if (!std::filesystem::is_regular_file(file)) {
        throw std::runtime_error("'" + printable(file) + "' is not a regular file");
    }
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("'" + printable(file) + "' can't be opened for reading");
    const auto writer = bucket.openWrite(path);
    copy(in, *writer);
    if (in.bad()) throw std::runtime_error("'" + printable(file) + "' can't be read");
    writer->commit();
}

}  // namespace

void addPutCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("put", "Store a file in a bucket");
    auto arguments = std::make_shared<PutArguments>();
    command->add_option("file", arguments->file, "a regular file")->required();
    command->add_option("address", arguments->address, "s3://BUCKET/KEY")->required();
    command->callback([&chosen, arguments] {
        const auto address = parseFileAddress(arguments->address);
        const auto file = arguments->file;
        chosen = onObject("put", address, [=](auto& bucket) { putFile(bucket, file, address.path()); });
    });
}

}  // namespace s3vfs
