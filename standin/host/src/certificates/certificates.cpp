#include "foundation/certificates/certificates.hpp"

#include "certificates/FirstExisting.hpp"
#include "certificates/HashedFolder.hpp"

#include <filesystem>
#include <system_error>

namespace foundation::certificates {

namespace {

constexpr std::string_view files[] = {
    "/etc/ssl/certs/ca-certificates.crt",                 // Debian, Ubuntu, Arch, Alpine
    "/etc/pki/tls/certs/ca-bundle.crt",                   // Fedora, RHEL
    "/etc/pki/ca-trust/extracted/pem/tls-ca-bundle.pem",  // Fedora, RHEL since the former is gone
    "/etc/ssl/ca-bundle.pem",                             // SUSE
    "/var/lib/ca-certificates/ca-bundle.pem",             // SUSE
    "/etc/ssl/cert.pem",                                  // macOS, BSD, Alpine
    "/opt/homebrew/etc/ca-certificates/cert.pem",         // macOS with Homebrew
    "/usr/local/etc/ca-certificates/cert.pem",            // the same on Intel
};

constexpr std::string_view folders[] = {
    "/etc/ssl/certs",                                  // Debian, Ubuntu, Arch, Alpine, SUSE
    "/etc/pki/ca-trust/extracted/pem/directory-hash",  // Fedora, whose /etc/ssl/certs may not be hashed
    "/opt/homebrew/etc/openssl@3/certs",               // macOS with Homebrew
    "/usr/local/etc/openssl@3/certs",                  // the same on Intel
};

bool isFile(std::string_view path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

}  // namespace

std::string getSystemCertificatesFile() {
    return firstExisting(files, isFile);
}

std::string getSystemCertificatesFolder() {
    return firstExisting(folders, isHashedFolder);
}

}  // namespace foundation::certificates
