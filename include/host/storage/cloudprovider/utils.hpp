#pragma once

#include <boost/date_time/posix_time/ptime.hpp>

namespace storage::cloudprovider::utils {

/// The UTC time that many milliseconds after (or, negative, before) 1970-01-01T00:00:00Z;
/// `not_a_date_time` outside the years 1400 to 9999, which are all that a ptime can hold. Never throws.
boost::posix_time::ptime long2Ptime(long long millisecondsSinceEpoch);

}  // namespace storage::cloudprovider::utils
