#pragma once

#include "S3ProviderFactoryV2.hpp"
#include "conformance/AmazonTest.hpp"

namespace testsupport {

using storage::s3provider::S3ProviderFactoryV2;

/// Everything as it is without a setting: HTTPS, Amazon's host names with the bucket in front, the region
/// that S3 tells.
class DefaultPathTest : public AmazonTest {
protected:
    S3ProviderFactoryV2 factory{nullptr};
};

}  // namespace testsupport
