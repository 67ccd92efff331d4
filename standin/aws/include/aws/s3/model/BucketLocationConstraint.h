#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

namespace Aws::S3::Model {

/// The regions known by name when this interface was made. Others have numbers too, for a process's lifetime.
enum class BucketLocationConstraint {
    NOT_SET,
    af_south_1,
    ap_east_1,
    ap_northeast_1,
    ap_northeast_2,
    ap_northeast_3,
    ap_south_1,
    ap_south_2,
    ap_southeast_1,
    ap_southeast_2,
    ap_southeast_3,
    ca_central_1,
    cn_north_1,
    cn_northwest_1,
    EU,
    eu_central_1,
    eu_north_1,
    eu_south_1,
    eu_south_2,
    eu_west_1,
    eu_west_2,
    eu_west_3,
    me_south_1,
    sa_east_1,
    us_east_2,
    us_gov_east_1,
    us_gov_west_1,
    us_west_1,
    us_west_2,
    us_iso_west_1,
    us_east_1
};

/// Regions and their names, those unknown included: an unknown name is given a value of its own, which has
/// that name from then on. Thread-safe.
namespace BucketLocationConstraintMapper {

/// NOT_SET for the empty name.
BucketLocationConstraint GetBucketLocationConstraintForName(const Aws::String& name);

/// Empty for NOT_SET, and for a value that no name was given.
Aws::String GetNameForBucketLocationConstraint(BucketLocationConstraint value);

}  // namespace BucketLocationConstraintMapper

}  // namespace Aws::S3::Model
