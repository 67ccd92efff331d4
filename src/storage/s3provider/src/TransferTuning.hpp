#pragma once

#include <cstdint>

namespace storage::s3provider {

/// Settings by which a transfer layer can size itself, read from the environment at every call. A value that
/// isn't a 32-bit number leaves a record in the log and gives the default; no other check is made, so 0 and
/// negative values are returned as they are. Any thread, as long as none changes the environment.

/// Bytes of one transfer buffer: `ZR_AWS_TRANSFER_BUFFER_SIZE`, default 5242880.
std::int64_t transferBufferSize();

/// Bytes of memory for all transfers: `ZR_AWS_TRANSFER_MAX_HEAP_SIZE`, default 52428800.
std::int64_t transferMaxHeapSize();

/// Threads for transfers: `ZR_AWS_TRANSFER_MAX_NUM_THREADS`, default 10.
std::int64_t transferMaxNumThreads();

}  // namespace storage::s3provider
