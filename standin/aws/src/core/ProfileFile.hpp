#pragma once

#include <aws/core/config/AWSProfileConfigLoaderBase.h>

#include <optional>
#include <string>
#include <string_view>

/// The files ~/.aws/config and ~/.aws/credentials, read as the SDK reads them.
namespace standin::aws {

using Profiles = Aws::Config::AWSProfileConfigLoader::ProfilesContainer;

/// Which sections of a file are profiles.
enum class ProfileSections {
    Named,    ///< "[x]", as in a credentials file
    Prefixed  ///< "[profile x]", and "[default]", as in a config file
};

/// A line that is neither section nor setting ends the reading, and its section counts for nothing; so does a
/// setting before the first section.
///
/// A "#" or ";" begins a comment wherever it stands. Lines of one or two characters are passed over.
/// Indented settings are the profile's own like any others. Sections that are no profiles are passed over.
/// Of a profile with several sections, region and credentials of the last one that has them count, and the
/// last one's settings.
Profiles parseProfiles(std::string_view text, ProfileSections sections);

/// The file's content; nothing when it can't be read or is larger than any such file.
std::optional<std::string> readProfileFile(const std::string& fileName);

}  // namespace standin::aws
