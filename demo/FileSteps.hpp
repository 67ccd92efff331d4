#pragma once

#include <filesystem>
#include <foundation/storage/provider/IProvider.hpp>
#include <vector>

#include "Report.hpp"

namespace demo {

using Paths = std::vector<std::filesystem::path>;

/// What a host does with the files of an opened bucket. Each is one step of the report.
/// @{
void fillBucket(foundation::storage::provider::IProvider& bucket, Report& report, const Paths& files);
void lookAround(foundation::storage::provider::IProvider& bucket, Report& report, const Paths& files);
void readBack(foundation::storage::provider::IProvider& bucket, Report& report, const Paths& files);
void readRange(foundation::storage::provider::IProvider& bucket, Report& report,
               const std::filesystem::path& file);
void removeEverything(foundation::storage::provider::IProvider& bucket, Report& report);
/// @}

}  // namespace demo
