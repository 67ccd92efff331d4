#include <aws/core/client/ClientConfiguration.h>
#include <aws/core/client/DefaultRetryStrategy.h>

namespace Aws::Client {

ClientConfiguration::ClientConfiguration() : retryStrategy(std::make_shared<DefaultRetryStrategy>()) {}

}  // namespace Aws::Client
