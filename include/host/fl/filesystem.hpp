#pragma once

#include <boost/date_time/posix_time/ptime.hpp>

#include <filesystem>
#include <string>

namespace fl::filesystem {

/// What is known of a file.
struct file_status {
    bool exists = false;  ///< as a file, a folder or anything else
    boost::posix_time::ptime
        modificationTime;  ///< UTC, to the microsecond; not_a_date_time if it doesn't exist
};

/// The status of what the path leads to, through symbolic links. Never throws: what can't be looked at, for
/// whatever reason, doesn't exist. Any thread.
file_status status(const std::filesystem::path& path) noexcept;

namespace detail {

/// The path as this system takes it: UTF-8. `extended` asks for the form without length limit on systems that
/// have two; here there is one. Throws fl::i18n::conversion_error for ill-formed UTF-16. Any thread.
std::filesystem::path make_native_form(const std::u16string& path, bool extended);

}  // namespace detail

}  // namespace fl::filesystem
