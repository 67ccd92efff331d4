#pragma once

#include "replay/RecordedCase.hpp"

namespace replay {

/// What was recorded, with the linked libcurl's say in what isn't the SDK's: libcurl's words for its
/// failures; whether it names the address of a server or proxy with which it came to no terms; and whether it
/// keeps a connection on which an upload was refused, which is as in `seen`, since newer versions leave it to
/// chance.
Json asOfLinkedCurl(const Json& recorded, const Json& seen);

}  // namespace replay
