#pragma once

#include <string>

namespace s3vfs::explain {

/// Whether the host library's proxy provider leaves a URL without proxy, whoever knows of one. Asks nobody
/// but `no_proxy`.
bool needsNoProxy(const std::string& url);

}  // namespace s3vfs::explain
