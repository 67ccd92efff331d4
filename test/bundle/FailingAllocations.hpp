#pragma once

namespace testsupport {

/// Lets this thread's next `new` throw std::bad_alloc, whichever library it is in.
void failNextAllocation();

}  // namespace testsupport
