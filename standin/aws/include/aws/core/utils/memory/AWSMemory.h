#pragma once

#include <memory>
#include <utility>

/// Allocation by the SDK's names. There is no custom memory manager here: the tag that names an
/// allocation's purpose is not used, and every one of these is the standard library's.
namespace Aws {

template <typename T>
using UniquePtr = std::unique_ptr<T>;

template <typename T, typename... Args>
std::shared_ptr<T> MakeShared(const char* /*allocationTag*/, Args&&... args) {
    return std::make_shared<T>(std::forward<Args>(args)...);
}

template <typename T, typename... Args>
UniquePtr<T> MakeUnique(const char* /*allocationTag*/, Args&&... args) {
    return std::make_unique<T>(std::forward<Args>(args)...);
}

/// The caller owns the object, and ends it with Delete().
template <typename T, typename... Args>
T* New(const char* /*allocationTag*/, Args&&... args) {
    return std::make_unique<T>(std::forward<Args>(args)...).release();
}

template <typename T>
void Delete(T* object) {
    std::unique_ptr<T>{object}.reset();
}

}  // namespace Aws
