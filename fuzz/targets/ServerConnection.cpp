#include "Conversation.hpp"
#include "FuzzTarget.hpp"
#include "TestBucket.hpp"

// All that a client sends on one connection, to a server that is open to everybody.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    s3server::Options options = fuzz::frozenInTime();
    options.checkSignatures = false;
    fuzz::converse(fuzz::textOf(data, size), options);
    return 0;
}
