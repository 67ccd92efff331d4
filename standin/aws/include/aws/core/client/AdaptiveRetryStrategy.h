#pragma once

#include <aws/core/client/RetryStrategy.h>

namespace Aws::Client {

/// Retries as the standard strategy does. The client-side rate limit, which makes it adaptive, is not
/// offered.
class AdaptiveRetryStrategy : public StandardRetryStrategy {
public:
    using StandardRetryStrategy::StandardRetryStrategy;

    const char* GetStrategyName() const override { return "adaptive"; }
};

}  // namespace Aws::Client
