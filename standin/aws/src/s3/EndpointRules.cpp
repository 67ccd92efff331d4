#include "s3/EndpointRules.hpp"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "core/PercentEncoding.hpp"

namespace standin::aws::s3 {

namespace {

constexpr std::string_view globalRegion = "aws-global";
constexpr std::string_view mainRegion = "us-east-1";
constexpr std::string_view fipsPrefix = "fips-";
constexpr std::string_view fipsSuffix = "-fips";

// Partitions other than the commercial one. A region is in the one whose prefix is followed by a word and a
// number in its name, or whose name for all its regions it is.
struct Partition {
    std::string_view regionPrefix;
    std::string_view wholePartition;
    std::string_view domain;
    bool hasFips;
};
constexpr Partition partitions[] = {
    {"cn-", "aws-cn-global", "amazonaws.com.cn", false},
    {"us-iso-", "aws-iso-global", "c2s.ic.gov", true},
    {"us-isob-", "aws-iso-b-global", "sc2s.sgov.gov", true},
    {"eu-isoe-", "", "cloud.adc-e.uk", true},
    {"us-isof-", "", "csp.hci.ic.gov", true},
};
// GovCloud among them: it has a domain of its own for other services only.
constexpr Partition commercial = {"", globalRegion, "amazonaws.com", true};

bool startsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

bool endsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

bool isIn(const Partition& partition, std::string_view region) {
    if (region == partition.wholePartition) return true;
    if (!startsWith(region, partition.regionPrefix)) return false;
    region.remove_prefix(partition.regionPrefix.size());
    const auto number = region.find('-') + 1;
    return number > 1 && number < region.size() && region[number] >= '0' && region[number] <= '9';
}

const Partition& partitionOf(std::string_view region) {
    const auto* const found =
        std::find_if(std::begin(partitions), std::end(partitions),
                     [&](const Partition& partition) { return isIn(partition, region); });
    return found != std::end(partitions) ? *found : commercial;
}

std::string regionToSign(const EndpointInput& input) {
    return input.region == globalRegion ? std::string(mainRegion) : input.region;
}

bool isGlobal(const EndpointInput& input) {
    const bool asked =
        input.region == globalRegion || (input.region == mainRegion && input.useGlobalEndpoint);
    return asked && !input.useFips && !input.useDualStack;
}

// A region's name may ask for FIPS endpoints.
void takeFipsFromRegion(EndpointInput& input) {
    const std::size_t length = input.region.size();
    if (startsWith(input.region, fipsPrefix)) {
        input.region.erase(0, fipsPrefix.size());
    } else if (endsWith(input.region, fipsSuffix)) {
        input.region.erase(length - fipsSuffix.size());
    }
    input.useFips = input.useFips || input.region.size() < length;
}

std::string serviceHost(const EndpointInput& input) {
    std::string host = "s3";
    if (input.useFips) host += "-fips";
    if (input.useDualStack) host += ".dualstack";
    if (!isGlobal(input)) host += "." + regionToSign(input);
    return host.append(".").append(partitionOf(input.region).domain);
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

std::string notSupported(std::string_view what, const std::string& bucket) {
    return std::string(what) + " are not supported: `" + bucket + "`";
}

// Buckets have no ARN of their own here: what has one is an access point.
std::string whyNotArn(const EndpointInput& input) {
    const auto fields = arnFields(input.bucket);
    if (fields.size() < 6 || fields[5].empty())
        return "Invalid ARN: `" + input.bucket + "` was not a valid ARN";
    const std::string& service = fields[2];
    const std::string& region = fields[3];
    const std::string type = fields[5].substr(0, fields[5].find_first_of(":/"));
    if (input.forcePathStyle) return "Path-style addressing cannot be used with ARN buckets";
    if (!startsWith(service, "s3-") && !(service == "s3" && type == "accesspoint"))
        return "Invalid ARN: Unrecognized format: " + input.bucket + " (type: " + type + ")";
    if (!region.empty() && region != input.region) {
        return "Invalid configuration: region from ARN `" + region + "` does not match client region `" +
               input.region + "` and UseArnRegion is `false`";
    }
    return notSupported("Access points", input.bucket);
}

// Buckets that have endpoints of their own. What would go to S3's would find nothing there, or another
// bucket.
std::string whyNotBucket(const EndpointInput& input) {
    constexpr std::string_view directorySuffix = "--x-s3";
    constexpr std::string_view outpostSuffix = "--op-s3";
    constexpr std::size_t shortestOutpostAlias = 50;
    const std::string& bucket = input.bucket;
    if (endsWith(bucket, directorySuffix)) return notSupported("Directory buckets", bucket);
    if (endsWith(bucket, outpostSuffix) && bucket.size() >= shortestOutpostAlias)
        return notSupported("Access points of Outposts", bucket);
    return startsWith(bucket, "arn:") ? whyNotArn(input) : "";
}

// Empty when the inputs go together.
std::string_view whyNotTogether(const EndpointInput& input) {
    const bool custom = !input.endpointOverride.empty();
    if (custom && input.useDualStack) return "Cannot set dual-stack in combination with a custom endpoint.";
    if (custom && input.useFips) return "A custom endpoint cannot be combined with FIPS";
    if (input.useFips && !partitionOf(input.region).hasFips) return "Partition does not support FIPS";
    return {};
}

/// For messages; an address that may hold a password isn't for the log.
std::string quoted(const std::string& endpoint) {
    return '`' + (endpoint.find('@') == std::string::npos ? endpoint : "...") + '`';
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
    takeFipsFromRegion(input);
    if (const auto reason = whyNotTogether(input); !reason.empty())
        return EndpointFailure{std::string(reason)};
    if (!isHostLabel(input.region))
        return EndpointFailure{"Invalid region: region was not a valid DNS name."};
    const auto service = serviceUrl(input);
    if (!service) {
        return EndpointFailure{"Custom endpoint " + quoted(input.endpointOverride) + " was not a valid URI"};
    }
    if (auto reason = whyNotBucket(input); !reason.empty()) return EndpointFailure{std::move(reason)};
    return ResolvedEndpoint{bucketUrl(input, *service), regionToSign(input)};
}

}  // namespace standin::aws::s3
