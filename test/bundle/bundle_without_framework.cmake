# Asks for a bundle where CppMicroServices isn't there, in the object format that it is called with.
include("${MODULES}/BundleResources.cmake")
bundle_resources(library bundle manifest.json)
