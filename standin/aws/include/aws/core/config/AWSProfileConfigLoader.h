#pragma once

#include <aws/core/config/AWSConfigFileProfileConfigLoader.h>
#include <aws/core/config/AWSProfileConfig.h>
#include <aws/core/config/AWSProfileConfigLoaderBase.h>
