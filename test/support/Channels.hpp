#pragma once

namespace testsupport {

/// @{ The plug-in's channels of the diagnostic log.
constexpr const char* clientChannel = "storage::s3provider::S3Client";
constexpr const char* factoryChannel = "storage::s3provider::AwsS3ClientFactory";
/// @}

}  // namespace testsupport
