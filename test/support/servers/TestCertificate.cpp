#include "support/servers/TestCertificate.hpp"

#include <openssl/ec.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <arpa/inet.h>

#include <array>
#include <cstdio>
#include <stdexcept>

namespace testsupport {
namespace {

template <auto Free>
struct Deleter {
    template <typename T>
    void operator()(T* object) const {
        Free(object);
    }
};

using KeyPtr = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY_free>>;
using CertificatePtr = std::unique_ptr<X509, Deleter<X509_free>>;
using ExtensionPtr = std::unique_ptr<X509_EXTENSION, Deleter<X509_EXTENSION_free>>;
using FilePtr = std::unique_ptr<FILE, Deleter<std::fclose>>;

constexpr long secondsPerDay = 24L * 60 * 60;

void require(bool success, const std::string& what) {
    if (success) return;
    std::array<char, 256> text{};
    ERR_error_string_n(ERR_get_error(), text.data(), text.size());
    throw std::runtime_error("test certificate: " + what + ": " + text.data());
}

KeyPtr newKey() {
    KeyPtr key{EVP_EC_gen("P-256")};
    require(key != nullptr, "making a key");
    return key;
}

bool isAddress(const std::string& name) {
    in6_addr address{};
    return inet_pton(AF_INET, name.c_str(), &address) == 1 ||
           inet_pton(AF_INET6, name.c_str(), &address) == 1;
}

std::string alternativeNames(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
        list.append(list.empty() ? "" : ",").append(isAddress(name) ? "IP:" : "DNS:").append(name);
    return list;
}

void addExtension(X509& certificate, X509& issuer, int type, const std::string& value) {
    X509V3_CTX context{};
    X509V3_set_ctx(&context, &issuer, &certificate, nullptr, nullptr, 0);
    const ExtensionPtr extension{X509V3_EXT_conf_nid(nullptr, &context, type, value.c_str())};
    require(extension && X509_add_ext(&certificate, extension.get(), -1) == 1, "extension " + value);
}

/// The first day of a validity of two days counted from today.
long firstDay(Validity validity) {
    switch (validity) {
        case Validity::Current:
            return -1;
        case Validity::Expired:
            return -3;
        case Validity::NotYet:
            return 1;
    }
    return 0;
}

/// Not signed yet.
CertificatePtr newCertificate(EVP_PKEY& key, const std::string& commonName, long serial, Validity validity) {
    CertificatePtr made{X509_new()};
    require(made != nullptr, "making a certificate");
    X509* certificate = made.get();
    const long first = firstDay(validity) * secondsPerDay;
    X509_set_version(certificate, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), serial);
    X509_gmtime_adj(X509_getm_notBefore(certificate), first);
    X509_gmtime_adj(X509_getm_notAfter(certificate), first + 2 * secondsPerDay);
    X509_set_pubkey(certificate, &key);
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char*>(commonName.c_str()), -1, -1, 0);
    return made;
}

/// What a folder of trusted certificates has to call this one (openssl-rehash(1)).
std::string hashedName(const X509& certificate) {
    int hashed = 0;
    const unsigned long hash =
        X509_NAME_hash_ex(X509_get_subject_name(&certificate), nullptr, nullptr, &hashed);
    require(hashed == 1, "hashing a name");
    std::array<char, 16> name{};
    std::snprintf(name.data(), name.size(), "%08lx.0", hash);
    return name.data();
}

FilePtr create(const std::filesystem::path& path) {
    FilePtr file{std::fopen(path.c_str(), "w")};
    if (!file) throw std::runtime_error("test certificate: can't write " + path.string());
    return file;
}

void write(const std::filesystem::path& path, X509& certificate) {
    require(PEM_write_X509(create(path).get(), &certificate) == 1, "writing " + path.string());
}

void write(const std::filesystem::path& path, EVP_PKEY& key) {
    const FilePtr file = create(path);
    require(PEM_write_PrivateKey(file.get(), &key, nullptr, nullptr, 0, nullptr, nullptr) == 1,
            "writing " + path.string());
}

}  // namespace

struct TestAuthority::Keys {
    KeyPtr key = newKey();
    CertificatePtr certificate = newCertificate(*key, "Test Authority", 1, Validity::Current);
};

TestAuthority::TestAuthority() : keys_(std::make_unique<Keys>()) {
    X509& certificate = *keys_->certificate;
    X509_set_issuer_name(&certificate, X509_get_subject_name(&certificate));
    addExtension(certificate, certificate, NID_basic_constraints, "critical,CA:TRUE");
    addExtension(certificate, certificate, NID_key_usage, "critical,keyCertSign");
    addExtension(certificate, certificate, NID_subject_key_identifier, "hash");
    require(X509_sign(&certificate, keys_->key.get(), EVP_sha256()) > 0, "signing");
    write(caFile(), certificate);
    std::filesystem::create_directory(caFolder());
    write(caFolder() / hashedName(certificate), certificate);
}

TestAuthority::~TestAuthority() = default;

std::filesystem::path TestAuthority::caFile() const {
    return folder_.path() / "ca.pem";
}

std::filesystem::path TestAuthority::caFolder() const {
    return folder_.path() / "trusted";
}

CertificateFiles TestAuthority::issue(const std::vector<std::string>& names, Validity validity) {
    const std::string number = std::to_string(++issued_);
    const KeyPtr key = newKey();
    const CertificatePtr certificate = newCertificate(*key, names.at(0), issued_ + 1, validity);
    X509_set_issuer_name(certificate.get(), X509_get_subject_name(keys_->certificate.get()));
    addExtension(*certificate, *keys_->certificate, NID_basic_constraints, "CA:FALSE");
    addExtension(*certificate, *keys_->certificate, NID_ext_key_usage, "serverAuth");
    addExtension(*certificate, *keys_->certificate, NID_subject_alt_name, alternativeNames(names));
    addExtension(*certificate, *keys_->certificate, NID_authority_key_identifier, "keyid");
    require(X509_sign(certificate.get(), keys_->key.get(), EVP_sha256()) > 0, "signing");

    CertificateFiles files{folder_.path() / ("server-" + number + ".pem"),
                           folder_.path() / ("server-" + number + ".key")};
    write(files.certificate, *certificate);
    write(files.key, *key);
    return files;
}

}  // namespace testsupport
