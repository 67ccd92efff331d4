#pragma once

#include <foundation/storage/provider/PhysicalProviderFactory.hpp>
#include <memory>

namespace s3vfs {

/// The factory of the providers for s3 IRIs. It keeps the AWS SDK initialised, so it must outlive the
/// providers it made. The environment mustn't change meanwhile.
std::shared_ptr<foundation::storage::provider::PhysicalProviderFactory> makeProviderFactory();

}  // namespace s3vfs
