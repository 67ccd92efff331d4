#pragma once

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/utils/memory/stl/AWSMap.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::Config {

/// One profile of a configuration or credentials file: a name and its settings.
class Profile {
public:
    const Aws::String& GetName() const { return name_; }
    void SetName(const Aws::String& name) { name_ = name; }

    /// Empty without an access key, whatever else is set.
    const Aws::Auth::AWSCredentials& GetCredentials() const { return credentials_; }
    void SetCredentials(const Aws::Auth::AWSCredentials& credentials) { credentials_ = credentials; }

    /// As written; empty when not set.
    const Aws::String& GetRegion() const { return region_; }
    void SetRegion(const Aws::String& region) { region_ = region; }

    /// The setting by that name, letter case included; empty when there is none. Of a profile that is named
    /// by several sections, the last section's settings only.
    Aws::String GetValue(const Aws::String& key) const {
        const auto found = settings_.find(key);
        return found != settings_.end() ? found->second : Aws::String();
    }
    void SetAllKeyValPairs(Aws::Map<Aws::String, Aws::String> settings) { settings_ = std::move(settings); }

private:
    Aws::String name_;
    Aws::String region_;
    Aws::Auth::AWSCredentials credentials_;
    Aws::Map<Aws::String, Aws::String> settings_;
};

}  // namespace Aws::Config
