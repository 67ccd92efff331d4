#pragma once

#include <foundation/storage/provider/Exception.hpp>
#include <storage/cloudprovider/CloudException.hpp>
#include <string>

namespace s3vfs {

/// A failed operation in one line: its message, and its identifier in brackets where it has one.
std::string describe(const storage::cloudprovider::CloudException& failure);

/// A failure to open an IRI in one line: its message, the code's name, the IRI, and its contexts, newest
/// first.
std::string describe(const foundation::storage::provider::Exception& failure);

}  // namespace s3vfs
