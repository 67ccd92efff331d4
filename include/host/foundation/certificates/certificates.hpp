#pragma once

#include <string>

/// Where the system keeps the root certificates that it trusts. Both may be called from any thread, look anew
/// each time, and read no environment variable.
namespace foundation::certificates {

/// The file with all certificates, in PEM; UTF-8, empty when none of the known ones exists.
std::string getSystemCertificatesFile();

/// The folder with one file a certificate, named by OpenSSL's hashes; UTF-8, empty when none of the known
/// ones has such files.
std::string getSystemCertificatesFolder();

}  // namespace foundation::certificates
