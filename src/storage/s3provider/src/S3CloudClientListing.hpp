#pragma once

#include <aws/s3/model/ListObjectsV2Result.h>

#include <boost/date_time/posix_time/ptime.hpp>
#include <functional>
#include <storage/cloudprovider/CloudRecords.hpp>
#include <vector>

namespace storage::s3provider {

/// The current time, in UTC.
using Clock = std::function<boost::posix_time::ptime()>;

/// The entries of one page of a listing: an entry for each object, then one for each common prefix, in S3's
/// order and with their names decoded. S3 has no time for a prefix, so it gets that of `now`, which is asked
/// anew for each: no two need be equal.
std::vector<cloudprovider::EntryInfo> pageEntries(const Aws::S3::Model::ListObjectsV2Result& page,
                                                  const Clock& now);

}  // namespace storage::s3provider
