#pragma once

#include <string>

namespace standin::aws {

/// The value; empty also when not set. Not for use while another thread changes the environment.
std::string environmentVariable(const char* name);

}  // namespace standin::aws
