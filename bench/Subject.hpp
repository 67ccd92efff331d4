#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

#include "Target.hpp"

namespace bench {

/// A caller's buffer that content is read into, the same one each time.
class Sink : public std::streambuf {
public:
    explicit Sink(std::size_t size) : bytes_(size, '\0') { clear(); }

    void clear() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }
    std::uint64_t filled() const { return static_cast<std::uint64_t>(pptr() - pbase()); }
    /// False when the content doesn't fit.
    bool add(const char* bytes, std::size_t count) {
        const auto size = static_cast<std::streamsize>(count);
        return sputn(bytes, size) == size;
    }

private:
    std::string bytes_;
};

/// One way to do the measured operations; each returns how much it brought. Failures are exceptions.
class Subject {
public:
    virtual ~Subject() = default;

    virtual std::uint64_t head(const std::string& key) = 0;
    /// Bytes `first` to `last`, both included; all when both are 0.
    virtual std::uint64_t get(const std::string& key, std::uint64_t first, std::uint64_t last,
                              Sink& sink) = 0;
    virtual std::uint64_t put(const std::string& key) = 0;
    /// Number of keys in the first page.
    virtual std::uint64_t list(const std::string& prefix) = 0;
};

/// libcurl and OpenSSL with nothing between: the same requests, digests and signatures, one handle.
/// `content` is what put() stores.
std::unique_ptr<Subject> makeCurlSubject(const Target& target, std::string content);
/// The AWS SDK, or its stand-in: whichever this was built with.
std::unique_ptr<Subject> makeSdkSubject(const Target& target, const std::string& content);
/// The cloud client over that.
std::unique_ptr<Subject> makeClientSubject(const Target& target, const std::string& content);
/// For list() only: parses the same page from memory each time, and nothing else.
std::unique_ptr<Subject> makeListingParse(const Target& target);

}  // namespace bench
