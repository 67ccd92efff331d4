#pragma once

#include <string_view>

namespace standin::aws::s3 {

/// The text up to a place inside its first tag of more than 4 KiB, so that it is no document; all of it where
/// no tag is so long, as none of S3's is. tinyxml2 compares each attribute with all before it in the tag:
/// a megabyte of them would take it a minute, ten megabytes hours.
std::string_view cutInLongTag(std::string_view text);

}  // namespace standin::aws::s3
