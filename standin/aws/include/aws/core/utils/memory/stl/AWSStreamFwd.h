#pragma once

#include <iosfwd>

namespace Aws {

using IStream = std::basic_istream<char>;
using OStream = std::basic_ostream<char>;
using IOStream = std::basic_iostream<char>;
using FStream = std::basic_fstream<char>;

}  // namespace Aws
