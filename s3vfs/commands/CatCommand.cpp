#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <vector>

#include "Interruption.hpp"
#include "commands/ByteInterval.hpp"
#include "commands/Commands.hpp"

namespace s3vfs {

using foundation::storage::provider::IProvider;
using foundation::storage::provider::IReader;

namespace {

constexpr std::uint64_t downloadPiece = std::uint64_t{8} * 1024 * 1024;

void require(bool written) {
    if (!written) throw std::runtime_error("standard output could not be written");
}

void printBytes(IReader& file, std::uint64_t first, std::uint64_t count) {
    std::vector<char> piece(static_cast<std::size_t>(std::min(count, downloadPiece)));
    for (std::uint64_t done = 0; done < count;) {
        throwIfInterrupted();
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(count - done, piece.size()));
        const auto size = file.read(first + done, piece.data(), wanted);
        require(std::fwrite(piece.data(), 1, size, stdout) == size);
        done += size;
    }
    require(std::fflush(stdout) == 0);
}

void printWhole(IProvider& bucket, const std::u16string& path) {
    const auto file = bucket.openRead(path);
    printBytes(*file, 0, file->size());
}

void printRange(IProvider& bucket, const std::u16string& path, const ByteInterval& range) {
    const auto file = bucket.openRead(path);
    if (range.first >= file->size()) {
        throw std::runtime_error("the range begins at byte " + std::to_string(range.first) +
                                 ", but the file has " + std::to_string(file->size()) + " bytes");
    }
    const std::uint64_t last = std::min(range.last, file->size() - 1);
    printBytes(*file, range.first, last - range.first + 1);
}

struct CatArguments {
    std::string address;
    std::string range;
};

}  // namespace

void addCatCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("cat", "Write a file's bytes to standard output");
    auto arguments = std::make_shared<CatArguments>();
    command->add_option("address", arguments->address, "s3://BUCKET/KEY")->required();
    command->add_option("--range", arguments->range,
                        "FIRST-LAST: only these bytes, counted from 0, both included");
    command->callback([&chosen, arguments] {
        const auto address = parseFileAddress(arguments->address);
        if (arguments->range.empty()) {
            chosen = onObject("cat", address, [=](auto& bucket) { printWhole(bucket, address.path()); });
        } else {
            const auto range = parseByteInterval(arguments->range);
            chosen =
                onObject("cat", address, [=](auto& bucket) { printRange(bucket, address.path(), range); });
        }
    });
}

}  // namespace s3vfs
