#include "fl/filesystem.hpp"

#include "fl/i18n.hpp"
#include "storage/cloudprovider/utils.hpp"

#include <sys/stat.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <algorithm>

namespace fl::filesystem {

namespace {

boost::posix_time::ptime timeOf(const timespec& time) {
    constexpr std::time_t beyondTheCalendar = 1'000'000'000'000;  // in milliseconds it still fits
    const auto seconds = std::clamp(time.tv_sec, -beyondTheCalendar, beyondTheCalendar);
    return storage::cloudprovider::utils::long2Ptime(seconds * 1000) +
           boost::posix_time::microseconds(time.tv_nsec / 1000);
}

}  // namespace

file_status status(const std::filesystem::path& path) noexcept {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0) return {};
    return {true, timeOf(found.st_mtim)};
}

std::filesystem::path detail::make_native_form(const std::u16string& path, bool) {
    return fl::i18n::to_string(path);
}

}  // namespace fl::filesystem
