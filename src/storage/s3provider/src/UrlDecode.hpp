#pragma once

#include <string>

namespace storage::s3provider {

/// Undoes the URL encoding of names in a listing. Every "+" is a blank; then "%" and the two characters
/// after it are one byte. Nothing is validated: a "%" without two characters after it stands for itself,
/// and two characters that aren't both hexadecimal digits are consumed all the same, for the number that a
/// stream would read from them ("%4z" is the byte 4, "%zz" is 0).
std::string urlDecode(std::string text);

}  // namespace storage::s3provider
