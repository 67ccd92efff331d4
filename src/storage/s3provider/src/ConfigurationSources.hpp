#pragma once

#include <aws/core/auth/AWSCredentialsProvider.h>

#include <foundation/certificates/certificates.hpp>
#include <string>

#include "NumberParsing.hpp"

/// The places that are asked how to reach a bucket, in the order of asking. What makes clients goes by these
/// tables, and so can whoever explains what it did. Each is read anew whenever it is asked; a variable that
/// is set but empty counts as not set.
namespace storage::s3provider {

/// The value of an environment variable in UTF-8, bytes that aren't text replaced; empty when it isn't set.
std::string environmentText(const char* variable);

/// A place where the user may have chosen a region: a variable, or a file with profiles.
struct RegionSource {
    const char* variable;       ///< null for a file
    std::string (*fileName)();  ///< null for a variable
};

inline constexpr RegionSource regionSources[] = {
    {"AWS_DEFAULT_REGION", nullptr},
    {"AWS_REGION", nullptr},
    {nullptr, &Aws::Auth::ProfileConfigFileAWSCredentialsProvider::GetCredentialsProfileFilename},
    {nullptr, &Aws::Auth::GetConfigProfileFilename},
};

/// The profile whose region counts in the files: `AWS_PROFILE`, else "default".
std::string regionProfile();

/// The region whose client asks where a bucket is: `ZR_AWS_GETLOCATION_REGION`, else "us-east-2".
std::string bucketLookupRegion();

/// Where S3 is, for all buckets, without asking where they are: `ZR_AWS_ENDPOINT_OVERRIDE`. Empty: at Amazon.
std::string endpointOverride();

/// Whether proxies are looked for, which only the word "OFF" in `ZR_AWS_PROXY` prevents.
bool usesProxies();

/// The URL for which they are looked for. It is that of S3 as a whole: a proxy isn't chosen bucket by bucket.
std::wstring proxyLookupUrl();

/// Where trusted certificates are: in a variable, else where the system has them.
struct CertificateSource {
    const char* variable;
    std::string (*ofSystem)();
};

inline constexpr CertificateSource certificateFile{"ZR_ROOT_CERT_FILE",
                                                   &foundation::certificates::getSystemCertificatesFile};
inline constexpr CertificateSource certificateFolder{"ZR_ROOT_CERT_PATH",
                                                     &foundation::certificates::getSystemCertificatesFolder};

/// How downloads are repeated.
inline constexpr NumberSetting attemptsSetting{"ZR_AWS_GETDATA_ATTEMPTS", 5};
inline constexpr NumberSetting retryTimeSetting{"ZR_AWS_RETRYTIMEMS", 1000};

}  // namespace storage::s3provider
