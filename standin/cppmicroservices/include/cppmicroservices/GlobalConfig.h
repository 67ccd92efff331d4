#pragma once

/// In front of a declaration: other libraries see it, also when it is compiled so that they see nothing else.
#define US_ABI_EXPORT __attribute__((visibility("default")))
