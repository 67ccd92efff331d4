#pragma once

namespace testsupport {

/// Lets this thread's next `new` throw std::bad_alloc, whichever library it is in.
void failNextAllocation();

/// Lets the nth `new` from now on throw that this thread calls in the code of one library, which is named by
/// the path it was loaded from.
void failAllocation(int nth, const char* library);

/// Lets everything succeed again. Whether there was a failure that hadn't come yet.
bool stopFailing();

}  // namespace testsupport
