#include <aws/s3/model/BucketLocationConstraint.h>

#include <algorithm>
#include <mutex>
#include <string_view>
#include <vector>

namespace Aws::S3::Model::BucketLocationConstraintMapper {

namespace {

struct NamedRegion {
    BucketLocationConstraint value;
    std::string_view name;
};
constexpr NamedRegion namedRegions[] = {
    {BucketLocationConstraint::NOT_SET, ""},
    {BucketLocationConstraint::af_south_1, "af-south-1"},
    {BucketLocationConstraint::ap_east_1, "ap-east-1"},
    {BucketLocationConstraint::ap_northeast_1, "ap-northeast-1"},
    {BucketLocationConstraint::ap_northeast_2, "ap-northeast-2"},
    {BucketLocationConstraint::ap_northeast_3, "ap-northeast-3"},
    {BucketLocationConstraint::ap_south_1, "ap-south-1"},
    {BucketLocationConstraint::ap_south_2, "ap-south-2"},
    {BucketLocationConstraint::ap_southeast_1, "ap-southeast-1"},
    {BucketLocationConstraint::ap_southeast_2, "ap-southeast-2"},
    {BucketLocationConstraint::ap_southeast_3, "ap-southeast-3"},
    {BucketLocationConstraint::ca_central_1, "ca-central-1"},
    {BucketLocationConstraint::cn_north_1, "cn-north-1"},
    {BucketLocationConstraint::cn_northwest_1, "cn-northwest-1"},
    {BucketLocationConstraint::EU, "EU"},
    {BucketLocationConstraint::eu_central_1, "eu-central-1"},
    {BucketLocationConstraint::eu_north_1, "eu-north-1"},
    {BucketLocationConstraint::eu_south_1, "eu-south-1"},
    {BucketLocationConstraint::eu_south_2, "eu-south-2"},
    {BucketLocationConstraint::eu_west_1, "eu-west-1"},
    {BucketLocationConstraint::eu_west_2, "eu-west-2"},
    {BucketLocationConstraint::eu_west_3, "eu-west-3"},
    {BucketLocationConstraint::me_south_1, "me-south-1"},
    {BucketLocationConstraint::sa_east_1, "sa-east-1"},
    {BucketLocationConstraint::us_east_2, "us-east-2"},
    {BucketLocationConstraint::us_gov_east_1, "us-gov-east-1"},
    {BucketLocationConstraint::us_gov_west_1, "us-gov-west-1"},
    {BucketLocationConstraint::us_west_1, "us-west-1"},
    {BucketLocationConstraint::us_west_2, "us-west-2"},
    {BucketLocationConstraint::us_iso_west_1, "us-iso-west-1"},
    {BucketLocationConstraint::us_east_1, "us-east-1"},
};

// Names that the enumeration lacks, by their values' distance from the first such value. Never shrinks:
// a value keeps its name.
class UnknownRegions {
public:
    BucketLocationConstraint valueOf(const Aws::String& name) {
        const std::lock_guard guard(mutex_);
        const auto found = std::find(names_.begin(), names_.end(), name);
        const auto distance = static_cast<int>(found - names_.begin());
        if (found == names_.end()) names_.push_back(name);
        return static_cast<BucketLocationConstraint>(firstValue + distance);
    }

    Aws::String nameOf(BucketLocationConstraint value) const {
        const std::lock_guard guard(mutex_);
        const auto distance = static_cast<long>(value) - firstValue;
        const bool known = distance >= 0 && distance < static_cast<long>(names_.size());
        return known ? names_[static_cast<std::size_t>(distance)] : Aws::String();
    }

private:
    static constexpr int firstValue = 1000;
    mutable std::mutex mutex_;
    std::vector<Aws::String> names_;
};

UnknownRegions& unknownRegions() {
    static UnknownRegions regions;
    return regions;
}

}  // namespace

BucketLocationConstraint GetBucketLocationConstraintForName(const Aws::String& name) {
    const auto* const found = std::find_if(std::begin(namedRegions), std::end(namedRegions),
                                           [&](const NamedRegion& region) { return region.name == name; });
    return found != std::end(namedRegions) ? found->value : unknownRegions().valueOf(name);
}

Aws::String GetNameForBucketLocationConstraint(BucketLocationConstraint value) {
    const auto* const found = std::find_if(std::begin(namedRegions), std::end(namedRegions),
                                           [&](const NamedRegion& region) { return region.value == value; });
    return found != std::end(namedRegions) ? Aws::String(found->name) : unknownRegions().nameOf(value);
}

}  // namespace Aws::S3::Model::BucketLocationConstraintMapper
