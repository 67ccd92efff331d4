#include <aws/s3/S3ClientConfiguration.h>

#include "core/Settings.hpp"
#include "core/Text.hpp"

namespace Aws::S3 {
namespace {

using Option = US_EAST_1_REGIONAL_ENDPOINT_OPTION;

Option chosen(Option option) {
    if (option != Option::NOT_SET) return option;
    const std::string text = standin::aws::setting("AWS_S3_US_EAST_1_REGIONAL_ENDPOINT",  //
                                                   "s3_us_east_1_regional_endpoint");
    return standin::aws::lowerCase(text) == "legacy" ? Option::LEGACY : Option::REGIONAL;
}

}  // namespace

S3ClientConfiguration::S3ClientConfiguration(const Aws::Client::ClientConfiguration& configuration,
                                             PayloadSigningPolicy signingPolicy, bool virtualAddressing,
                                             Option usEast1Option)
    : ClientConfiguration(configuration),
      useVirtualAddressing(virtualAddressing),
      useUSEast1RegionalEndPointOption(chosen(usEast1Option)),
      payloadSigningPolicy(signingPolicy) {}

}  // namespace Aws::S3
