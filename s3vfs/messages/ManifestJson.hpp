#pragma once

#include <cppmicroservices/AnyMap.h>

#include <nlohmann/json_fwd.hpp>

namespace s3vfs {

/// A bundle's manifest, as the framework has read it.
nlohmann::json jsonOf(const cppmicroservices::AnyMap& manifest);

}  // namespace s3vfs
