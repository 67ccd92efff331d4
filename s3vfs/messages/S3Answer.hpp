#pragma once

#include <string>

namespace s3vfs {

/// What S3 said of a failed request, in one line: status, code and message, read from the text of the
/// failure's diagnostic record. Empty when the text is none.
std::string describeS3Answer(const std::string& failureRecord);

}  // namespace s3vfs
