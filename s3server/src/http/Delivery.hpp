#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include "faults/FaultPlan.hpp"
#include "operations/Service.hpp"

namespace s3server {

/// What happens to the connection after an answer.
enum class Ending { KeepOpen, Close, Reset };

/// An answer, and what goes wrong with it.
struct Delivery {
    /// Without one, nothing is sent.
    std::optional<Reply> reply;
    /// So many bytes of the body are sent, whatever the head announces.
    std::uint64_t bodyLimit = std::numeric_limits<std::uint64_t>::max();
    Ending ending = Ending::KeepOpen;
};

/// Responds to a request as its fault says, waiting included; without a fault, as S3 would.
Delivery deliver(Service& service, FaultPlan& faults, Exchange& exchange);

}  // namespace s3server
