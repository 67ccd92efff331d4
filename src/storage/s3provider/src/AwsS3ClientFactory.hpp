#pragma once

#include <aws/core/client/ClientConfiguration.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3EndpointProvider.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>
#include <webproxy/webproxy.hpp>

#include "S3ClientConfiguration.hpp"

/// How SDK clients are made from the environment. Every function reads the environment anew and keeps
/// nothing, so what changes there takes effect for the next client. Any thread, as long as none changes the
/// environment. A variable that is set but empty counts as not set.
namespace storage::s3provider {

struct RegionSource;

/// The proxies for a URL, the preferred one first; empty: none is to be used.
using ProxyLookup = std::function<std::vector<webproxy::ProxyInfo>(const std::wstring& url)>;

/// What every client starts from: the scheme (`ZR_AWS_SCHEME`), the first proxy found unless `ZR_AWS_PROXY`
/// is "OFF", trusted certificates, time-outs of five minutes and up to 1000 connections. Region and endpoint
/// are left as the SDK has them. A proxy lookup that fails with a std::exception leaves a record and what had
/// been set by then; anything else it throws, and what the certificate locator throws, passes through.
Aws::Client::ClientConfiguration makeClientConfiguration();
/// The same, with the proxies from `lookup`.
Aws::Client::ClientConfiguration makeClientConfiguration(const ProxyLookup& lookup);

/// `ZR_ROOT_CERT_PATH`, else the system's folder of trusted certificates. Need not exist.
std::string rootCertificatePath();

/// `ZR_ROOT_CERT_FILE`, else the system's file of trusted certificates. Need not exist.
std::string rootCertificateFile();

/// Attempts of a download: `ZR_AWS_GETDATA_ATTEMPTS`, 5 by default. What isn't a 32-bit number leaves a
/// record and gives the default; no other check is made, so 0 and negative numbers are returned as they are.
/// Never throws.
std::int64_t getDataAttempts();

/// Milliseconds after a failed attempt: `ZR_AWS_RETRYTIMEMS`, 1000 by default. Read like the attempts.
std::int64_t getRetryTimeMs();

/// Both.
S3ClientConfiguration getRetrySettings();

/// The region the user chose: `AWS_DEFAULT_REGION`, `AWS_REGION`, or that of the profile `AWS_PROFILE` (else
/// "default") in the shared credentials file and then in the shared config file. Empty: none was chosen.
std::string regionFromEnvironment();

/// The region that one of `regionSources` holds; empty when it has none.
std::string regionFromSource(const RegionSource& source);

/// The region of a profile in a file whose sections are named by the bare profile; empty without one. An
/// unreadable file holds none.
std::string regionFromProfileFile(std::string fileName, std::string profile);

/// Asks S3 in which region a bucket is. A bucket without location is in "us-east-1". Empty when S3 doesn't
/// say, whatever the reason.
std::string queryBucketRegion(Aws::S3::S3Client& client, const std::string& bucket);
/// @{ The question alone, and what its answer comes to.
Aws::S3::Model::GetBucketLocationOutcome askBucketLocation(Aws::S3::S3Client& client,
                                                           const std::string& bucket);
std::string regionFrom(const Aws::S3::Model::GetBucketLocationOutcome& outcome);
/// @}

using EndpointProvider = Aws::Endpoint::EndpointProviderBase<Aws::S3::S3ClientConfiguration,
                                                             Aws::S3::Endpoint::S3BuiltInParameters,
                                                             Aws::S3::Endpoint::S3ClientContextParameters>;

/// A client that puts buckets into the host name where it can, and leaves payloads unsigned where TLS
/// protects them. The SDK must be initialised, and stay so while the client lives.
std::shared_ptr<Aws::S3::S3Client> makeS3Client(
    std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials,
    std::shared_ptr<EndpointProvider> endpointProvider,
    const Aws::Client::ClientConfiguration& configuration);

/// The same, with the plug-in's credentials chain and the SDK's endpoints, both new.
std::shared_ptr<Aws::S3::S3Client> makeS3Client(const Aws::Client::ClientConfiguration& configuration);

}  // namespace storage::s3provider
