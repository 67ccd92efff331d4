#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>

#include "ByteInterval.hpp"
#include "Commands.hpp"

namespace s3vfs {

namespace {

/// Standard output as a stream buffer that knows how much was written, and whether all could be.
class StandardOutput : public std::streambuf {
public:
    std::uint64_t written() const { return written_; }

    void finish() {
        if (std::fflush(stdout) != 0) failed_ = true;
        if (failed_) throw std::runtime_error("standard output could not be written");
    }

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        const auto done = std::fwrite(bytes, 1, static_cast<std::size_t>(count), stdout);
        written_ += done;
        if (done < static_cast<std::size_t>(count)) failed_ = true;
        return static_cast<std::streamsize>(done);
    }

    int_type overflow(int_type byte) override {
        const char c = traits_type::to_char_type(byte);
        return xsputn(&c, 1) == 1 ? traits_type::not_eof(byte) : traits_type::eof();
    }

private:
    std::uint64_t written_ = 0;
    bool failed_ = false;
};

using storage::cloudprovider::CloudClient;

void printWhole(CloudClient& bucket, const std::string& key) {
    StandardOutput output;
    std::ostream out(&output);
    bucket.download(key, out, 0, 0);
    output.finish();
}

std::uint64_t sizeOf(CloudClient& bucket, const std::string& key) {
    const auto entry = bucket.stat(key);
    if (!entry) throw std::runtime_error("there is no such object");
    return static_cast<std::uint64_t>(entry->size);
}

ByteInterval clampTo(const ByteInterval& range, std::uint64_t size) {
    if (range.first >= size) {
        throw std::runtime_error("the range begins at byte " + std::to_string(range.first) +
                                 ", but the object has " + std::to_string(size) + " bytes");
    }
    return {range.first, std::min(range.last, size - 1)};
}

// A download of one byte would be one of the whole object, so two are asked for where there are two: the
// byte and the one behind it, or before it at the object's end.
ByteInterval enlargeSingleByte(const ByteInterval& range, std::uint64_t size) {
    if (range.length() > 1 || size == 1) return range;
    if (range.last + 1 < size) return {range.first, range.last + 1};
    return {range.first - 1, range.last};
}

void printRange(CloudClient& bucket, const std::string& key, const ByteInterval& range) {
    const auto size = sizeOf(bucket, key);
    const auto wanted = clampTo(range, size);
    const auto asked = enlargeSingleByte(wanted, size);
    std::ostringstream received;
    bucket.download(key, received, asked.first, asked.last);
    const auto bytes = received.str();
    if (bytes.size() != asked.length()) {
        throw std::runtime_error("the object changed while it was read: " + std::to_string(asked.length()) +
                                 " bytes were asked for, " + std::to_string(bytes.size()) + " came");
    }
    StandardOutput output;
    output.sputn(bytes.data() + (wanted.first - asked.first), static_cast<std::streamsize>(wanted.length()));
    output.finish();
}

struct CatArguments {
    std::string address;
    std::string range;
};

}  // namespace

void addCatCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand("cat", "Write an object's bytes to standard output");
    auto arguments = std::make_shared<CatArguments>();
    command->add_option("address", arguments->address, "s3://BUCKET/KEY")->required();
    command->add_option("--range", arguments->range,
                        "FIRST-LAST: only these bytes, counted from 0, both included");
    command->callback([&chosen, arguments] {
        const auto address = parseObjectAddress(arguments->address);
        if (arguments->range.empty()) {
            chosen = {"cat", address, [=](auto& bucket) { printWhole(bucket, address.key); }};
        } else {
            const auto range = parseByteInterval(arguments->range);
            chosen = {"cat", address, [=](auto& bucket) { printRange(bucket, address.key, range); }};
        }
    });
}

}  // namespace s3vfs
