#pragma once

namespace Aws {

/// What a process can choose when it starts using the SDK; everything has its default here.
struct SDKOptions {};

/// Readies the process-wide parts (libcurl). To be called before the first client is made. Calls are
/// counted, so libraries of one process may each bring their own pair. Any thread.
void InitAPI(const SDKOptions& options);

/// Ends what one InitAPI() began; the last one releases it. A call too many does nothing. Clients that
/// still live keep working. Any thread.
void ShutdownAPI(const SDKOptions& options);

}  // namespace Aws
