#pragma once

#include <string_view>

#include "http/Request.hpp"
#include "store/Store.hpp"
#include "text/Dates.hpp"

namespace s3server {

enum class Verdict { Go, NotModified, Failed };

/// Judges the conditional headers of a request (RFC 9110, section 13.2.2). `prefix` is put before their
/// names: empty for the object read, "x-amz-copy-source-" for the source of a copy.
Verdict judge(const Request& request, const Object& object, std::string_view prefix = "");

}  // namespace s3server
