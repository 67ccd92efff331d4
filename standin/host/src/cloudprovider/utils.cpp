#include "storage/cloudprovider/utils.hpp"

#include <boost/date_time/posix_time/posix_time_types.hpp>

namespace storage::cloudprovider::utils {

using boost::posix_time::milliseconds;
using boost::posix_time::ptime;

boost::posix_time::ptime long2Ptime(long long millisecondsSinceEpoch) {
    static const ptime epoch(boost::gregorian::date(1970, 1, 1));
    static const auto earliest = (ptime(boost::posix_time::min_date_time) - epoch).total_milliseconds();
    static const auto latest = (ptime(boost::posix_time::max_date_time) - epoch).total_milliseconds();
    if (millisecondsSinceEpoch < earliest || millisecondsSinceEpoch > latest) return ptime();
    return epoch + milliseconds(millisecondsSinceEpoch);
}

}  // namespace storage::cloudprovider::utils
