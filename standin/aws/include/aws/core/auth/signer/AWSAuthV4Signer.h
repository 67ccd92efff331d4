#pragma once

namespace Aws::Client {

/// Holds the signer's settings; signing itself is inside the client.
class AWSAuthV4Signer {
public:
    /// Whether a request body sent over TLS is part of what is signed. Without TLS it always is.
    /// RequestDependent leaves it to the operation, and every one that is offered asks for it.
    enum class PayloadSigningPolicy { RequestDependent, Always, Never };

    AWSAuthV4Signer() = delete;
};

}  // namespace Aws::Client
