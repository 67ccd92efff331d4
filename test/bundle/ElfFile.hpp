#pragma once

#include <string>
#include <vector>

namespace testsupport {

/// What other libraries can see of a library: the names that its dynamic symbol table defines. Throws
/// std::runtime_error for a file that isn't ELF.
std::vector<std::string> exportedSymbols(const std::string& file);

/// Whether threads of a process that loads it get stacks with code that may run. Throws likewise.
bool wantsExecutableStacks(const std::string& file);

struct Section {
    std::string bytes;
    bool loaded;  ///< takes part in the process's memory, and so survives stripping
};

/// Throws std::runtime_error when there is no section of that name.
Section readSection(const std::string& file, const std::string& name);

}  // namespace testsupport
