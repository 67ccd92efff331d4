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
/// path. Nothing of a text that is neither, nor of one in which a password may go on behind a "/", "?" or
/// "#".
std::string addressShown(const std::string& text);

/// Whether a text has the form of Amazon's access keys: AKIA for those of users, ASIA for temporary ones, and
/// sixteen more capitals and digits.
bool isAccessKeyOfAmazon(const std::string& text);

/// One of Amazon's access keys by its last four characters. Nothing of any other, which may be a secret.
std::string accessKeyShown(const std::string& accessKeyId);

/// What somebody else wrote, who may have been told secrets: these are struck out.
std::string shownWithout(const std::vector<std::string>& secrets, std::string text);

}  // namespace s3vfs::explain
