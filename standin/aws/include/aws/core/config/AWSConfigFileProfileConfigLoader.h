#pragma once

#include <aws/core/config/AWSProfileConfigLoaderBase.h>

namespace Aws::Config {

/// Profiles of a file in the format of ~/.aws/config and ~/.aws/credentials, described in the reference guide
/// for AWS SDKs and tools under "Shared config and credentials files".
class AWSConfigFileProfileConfigLoader : public AWSProfileConfigLoader {
public:
    /// Reads nothing yet. With `useProfilePrefix`, as a config file has it, a section is a profile when its
    /// name begins with "profile " or is "default"; without, when its name doesn't.
    explicit AWSConfigFileProfileConfigLoader(const Aws::String& fileName, bool useProfilePrefix = false);

    const Aws::String& GetFileName() const { return fileName_; }
    void SetFileName(const Aws::String& fileName) { fileName_ = fileName; }

protected:
    bool LoadInternal() override;

private:
    Aws::String fileName_;
    bool useProfilePrefix_;
};

}  // namespace Aws::Config
