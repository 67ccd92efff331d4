#pragma once

#include <stdexcept>

namespace s3vfs {

/// The command line can't be obeyed. Its message is one line that says what to do instead.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace s3vfs
