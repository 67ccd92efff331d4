#pragma once

#include <storage/cloudprovider/CloudClient.hpp>
#include <string>

#include "Report.hpp"

namespace demo {

/// What the host's provider layer can do with a bucket's cloud client to write a large file. Each is one step
/// of the report. `content` is what the object has after the first step and before the second; more than two
/// parts.
/// @{
void uploadInParts(storage::cloudprovider::CloudClient& bucket, Report& report, const std::string& key,
                   const std::string& content);
void rewriteInParts(storage::cloudprovider::CloudClient& bucket, Report& report, const std::string& key,
                    std::string content);
/// @}

void abandonUpload(storage::cloudprovider::CloudClient& bucket, Report& report,
                   const s3server::Server& server, const std::string& bucketName);

}  // namespace demo
