#include <aws/core/config/AWSProfileConfigLoader.h>

#include "core/ProfileFile.hpp"

namespace Aws::Config {

using standin::aws::ProfileSections;

bool AWSProfileConfigLoader::Load() {
    if (!LoadInternal()) return false;
    m_lastLoadTime = Aws::Utils::DateTime::Now();
    return true;
}

AWSConfigFileProfileConfigLoader::AWSConfigFileProfileConfigLoader(const Aws::String& fileName,
                                                                   bool useProfilePrefix)
    : fileName_(fileName), useProfilePrefix_(useProfilePrefix) {}

bool AWSConfigFileProfileConfigLoader::LoadInternal() {
    m_profiles.clear();
    const auto content = standin::aws::readProfileFile(fileName_);
    if (!content) return false;
    m_profiles = standin::aws::parseProfiles(
        *content, useProfilePrefix_ ? ProfileSections::Prefixed : ProfileSections::Named);
    return !m_profiles.empty();
}

}  // namespace Aws::Config
