#pragma once

#include <aws/core/config/AWSProfileConfig.h>
#include <aws/core/utils/DateTime.h>
#include <aws/core/utils/memory/stl/AWSMap.h>
#include <aws/core/utils/memory/stl/AWSString.h>

namespace Aws::Config {

/// A source of profiles, read as a whole. For one thread at a time.
class AWSProfileConfigLoader {
public:
    using ProfilesContainer = Aws::Map<Aws::String, Profile>;

    AWSProfileConfigLoader() = default;
    virtual ~AWSProfileConfigLoader() = default;
    AWSProfileConfigLoader(const AWSProfileConfigLoader&) = delete;
    AWSProfileConfigLoader& operator=(const AWSProfileConfigLoader&) = delete;

    /// Reads the source anew. False when it can't be read or holds no profile; then what was read before
    /// may be gone.
    bool Load();

    /// What the last Load() found, by name.
    const ProfilesContainer& GetProfiles() const { return m_profiles; }

    /// Of the last Load() that was true; the epoch before the first.
    const Aws::Utils::DateTime& LastLoadTime() const { return m_lastLoadTime; }

protected:
    virtual bool LoadInternal() = 0;

    ProfilesContainer m_profiles;
    Aws::Utils::DateTime m_lastLoadTime;
};

}  // namespace Aws::Config
