#pragma once

#include <atomic>
#include <string>

namespace foundation::log {

/// The channel's mask of enabled levels, made with 0 on first use. The reference is good for ever, also in
/// destructors that run at process exit. Any thread.
std::atomic<unsigned>& enabledLevelsOf(const std::string& channel);

}  // namespace foundation::log
