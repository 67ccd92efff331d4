#pragma once

#include <string>
#include <vector>

namespace s3vfs::explain {

constexpr const char* notSet = "not set";

/// What is no secret, on one line: harmless to a terminal, and cut where it is very long.
std::string shown(const std::string& text);

/// The value of a variable that holds no secret, as the plug-in reads it; "not set" when there is none.
std::string variableShown(const char* variable);

/// The scheme, host and port of a URL or of HOST:PORT, without what else it may hold: a user, a password, a
/// path. Nothing of a text that is neither.
std::string addressShown(const std::string& text);

/// An access key by its last four characters; not even those of one that is too short or may be a secret.
std::string accessKeyShown(const std::string& accessKeyId);

/// What somebody else wrote, who may have been told secrets: these are struck out.
std::string shownWithout(const std::vector<std::string>& secrets, std::string text);

}  // namespace s3vfs::explain
