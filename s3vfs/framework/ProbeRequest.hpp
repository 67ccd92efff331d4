#pragma once

#include <string>

namespace s3vfs {

/// What arrived of a request: the path on its request line, still percent-encoded; or why nothing did.
struct ProbeResult {
    std::string path;
    std::string failure;  ///< empty: it arrived
};

/// Has the AWS SDK send a request for an object to a port of this process, on the loopback interface, with
/// keys that are nobody's, the bucket in the path, no proxy and no second attempt. Any thread; takes a few
/// milliseconds, and some seconds at most when the machine has none to spare.
ProbeResult probeRequest(const std::string& bucket, const std::string& key);

}  // namespace s3vfs
