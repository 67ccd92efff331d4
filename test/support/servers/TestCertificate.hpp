#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/process/TemporaryFolder.hpp"

namespace testsupport {

/// PEM files of a server's certificate and its private key.
struct CertificateFiles {
    std::filesystem::path certificate;
    std::filesystem::path key;
};

enum class Validity { Current, Expired, NotYet };

/// A certificate authority made afresh, with its files in a temporary folder that goes with it. Throws
/// std::runtime_error when OpenSSL or the file system fails. Not thread-safe.
class TestAuthority {
public:
    TestAuthority();
    ~TestAuthority();
    TestAuthority(const TestAuthority&) = delete;
    TestAuthority& operator=(const TestAuthority&) = delete;

    /// The authority's own certificate: what a client has to trust.
    std::filesystem::path caFile() const;

    /// A folder with that certificate alone, under the name that OpenSSL looks for.
    std::filesystem::path caFolder() const;

    /// A server certificate for these names; a name that reads as an IP address becomes an address entry. An
    /// expired one was valid until yesterday, one that isn't valid yet will be from tomorrow on.
    CertificateFiles issue(const std::vector<std::string>& names, Validity validity = Validity::Current);

private:
    struct Keys;

    TemporaryFolder folder_{"test-authority"};
    std::unique_ptr<Keys> keys_;
    long issued_ = 0;
};

}  // namespace testsupport
