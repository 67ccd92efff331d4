#pragma once

#include <aws/core/utils/memory/stl/AWSStreamFwd.h>

#include <istream>
#include <memory>

namespace Aws::Utils::Stream {

/// Owns the stream that holds a response's body. Movable; empty by default and after a move.
class ResponseStream {
public:
    ResponseStream() = default;
    /// Takes the stream over.
    explicit ResponseStream(Aws::IOStream* underlyingStreamToManage)
        : underlyingStream_(underlyingStreamToManage) {}

    /// Not to be called on an empty ResponseStream.
    Aws::IOStream& GetUnderlyingStream() const { return *underlyingStream_; }

private:
    std::unique_ptr<Aws::IOStream> underlyingStream_;
};

}  // namespace Aws::Utils::Stream
