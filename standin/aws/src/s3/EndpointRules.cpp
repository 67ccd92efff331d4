#include "s3/EndpointRules.hpp"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "core/PercentEncoding.hpp"

namespace standin::aws::s3 {

namespace {

constexpr std::string_view globalRegion = "aws-global";
constexpr std::string_view fipsPrefix = "fips-";

// Partitions by the beginning of their regions' names, in the order they are tried; else the commercial one.
struct Partition {
    std::string_view regionPrefix;
    std::string_view domain;
};
constexpr Partition partitions[] = {
    {"cn-", "amazonaws.com.cn"},    {"us-iso-", "c2s.ic.gov"},      {"us-isob-", "sc2s.sgov.gov"},
    {"eu-isoe-", "cloud.adc-e.uk"}, {"us-isof-", "csp.hci.ic.gov"}, {"", "amazonaws.com"},
};

bool startsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

std::string_view domainOf(std::string_view region) {
    return std::find_if(
               std::begin(partitions), std::end(partitions),
               [&](const Partition& partition) { return startsWith(region, partition.regionPrefix); })
        ->domain;
}

bool isGlobal(const EndpointInput& input) {
    return input.region == globalRegion || (input.region == "us-east-1" && input.useGlobalEndpoint);
}

std::string serviceHost(const EndpointInput& input) {
    std::string host = "s3";
    if (input.useFips) host += "-fips";
    if (input.useDualStack) host += ".dualstack";
    if (!isGlobal(input)) host += "." + input.region;
    return host.append(".").append(domainOf(input.region));
}

// The endpoint without a bucket; nothing when the override is no URL.
std::optional<Url> serviceUrl(const EndpointInput& input) {
    if (!input.endpointOverride.empty()) return splitUrl(input.endpointOverride);
    return Url{"https", serviceHost(input), std::nullopt, ""};
}

bool goesIntoHost(const EndpointInput& input, const Url& service) {
    if (input.forcePathStyle) return false;
    if (isVirtualHostable(input.bucket, false))
        return input.endpointOverride.empty() || !isIpv4Address(service.host);
    // A certificate's wildcard covers one label, so a name with dots would not match it.
    return service.scheme == "http" && isVirtualHostable(input.bucket, true);
}

Url bucketUrl(const EndpointInput& input, Url service) {
    if (input.bucket.empty()) return service;
    if (goesIntoHost(input, service)) {
        service.host.insert(0, input.bucket + ".");
    } else {
        service.path += "/" + encodeQueryText(input.bucket);
    }
    return service;
}

std::vector<std::string> arnFields(const std::string& arn) {
    std::vector<std::string> fields;
    std::size_t begin = 0;
    for (auto end = arn.find(':'); end != std::string::npos && fields.size() < 5;
         end = arn.find(':', begin)) {
        fields.push_back(arn.substr(begin, end - begin));
        begin = end + 1;
    }
    fields.push_back(arn.substr(begin));
    return fields;
}

// An ARN names an access point, which this client doesn't offer.
std::string whyNotArn(const EndpointInput& input) {
    const auto fields = arnFields(input.bucket);
    if (fields.size() < 6 || fields[5].empty())
        return "Invalid ARN: `" + input.bucket + "` was not a valid ARN";
    const std::string& region = fields[3];
    if (region == input.region) return "Invalid ARN: access points are not supported: `" + input.bucket + "`";
    return "Invalid configuration: region from ARN `" + region + "` does not match client region `" +
           input.region + "` and UseArnRegion is `false`";
}

}  // namespace

bool isVirtualHostable(std::string_view bucket, bool allowDots) {
    const bool hasUpperCase =
        std::any_of(bucket.begin(), bucket.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    if (bucket.size() < 3 || bucket.size() > 63 || hasUpperCase || isIpv4Address(bucket)) return false;
    return allowDots ? isHostName(bucket) : isHostLabel(bucket);
}

std::variant<ResolvedEndpoint, EndpointFailure> resolveEndpoint(EndpointInput input) {
    if (input.region.empty()) return EndpointFailure{"A region must be set when sending requests to S3."};
    if (startsWith(input.region, fipsPrefix)) {
        input.region.erase(0, fipsPrefix.size());
        input.useFips = true;
    }
    if (!isHostLabel(input.region))
        return EndpointFailure{"Invalid region: region was not a valid DNS name."};
    const auto service = serviceUrl(input);
    if (!service) {
        return EndpointFailure{"Custom endpoint `" + input.endpointOverride + "` was not a valid URI"};
    }
    if (startsWith(input.bucket, "arn:")) return EndpointFailure{whyNotArn(input)};

    const bool global = input.region == globalRegion;
    return ResolvedEndpoint{bucketUrl(input, *service), global ? "us-east-1" : input.region};
}

}  // namespace standin::aws::s3
