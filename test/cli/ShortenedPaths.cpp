#include <aws/core/endpoint/AWSEndpoint.h>
#include <dlfcn.h>

#include <filesystem>

// Loaded into a program before the stand-in SDK, this makes of that one which addresses other objects than
// those that are named, as the real one does: slashes are merged, a leading one and dot segments are lost.

void Aws::Endpoint::AWSEndpoint::AddPathSegments(const Aws::String& segments) {
    using Original = void(AWSEndpoint*, const Aws::String&);
    static auto* const original =
        reinterpret_cast<Original*>(::dlsym(RTLD_NEXT,
                                            "_ZN3Aws8Endpoint11AWSEndpoint15AddPathSegmentsERK"
                                            "NSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"));
    original(this, std::filesystem::path(segments).lexically_normal().relative_path().string());
}
