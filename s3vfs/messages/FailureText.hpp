#pragma once

#include <fl/i18n.hpp>
#include <foundation/storage/provider/Exception.hpp>
#include <storage/cloudprovider/CloudException.hpp>
#include <string>

namespace s3vfs {

/// A failed operation in one line: its message, and its identifier in brackets where it has one.
std::string describe(const storage::cloudprovider::CloudException& failure);

/// A failure to open an IRI in one line: its message, the code's name, the IRI, and its contexts, newest
/// first.
std::string describe(const foundation::storage::provider::Exception& failure);

/// A text that isn't UTF-8 in one line, without the text: where it breaks, and in which variable when it is
/// the name of the credentials file, which alone the plug-in can't do without. Reads the environment.
std::string describe(const fl::i18n::conversion_error& failure);

}  // namespace s3vfs
