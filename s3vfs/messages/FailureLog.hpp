#pragma once

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

namespace s3vfs {

/// The level of records that tell what S3 said of a failed request.
constexpr unsigned failedRequestLevel = 512;

/// Keeps the text of the latest record of a failed request while it lives: exceptions tell what failed, only
/// the record tells what S3 said. Records may come from any thread.
class FailureLog {
public:
    FailureLog();
    ~FailureLog();
    FailureLog(const FailureLog&) = delete;
    FailureLog& operator=(const FailureLog&) = delete;

    /// Empty when no request failed.
    std::string latest() const;

private:
    class Sink;

    boost::shared_ptr<Sink> sink_;
};

}  // namespace s3vfs
