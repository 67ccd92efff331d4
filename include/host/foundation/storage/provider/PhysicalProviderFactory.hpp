#pragma once

#include "foundation/storage/provider/IProvider.hpp"
#include "foundation/storage/provider/StorageIRI.hpp"

#include <memory>

namespace foundation::storage::provider {

/// Makes the providers of one IRI scheme. It is a service, registered with the property "scheme".
///
/// Any thread may call any operation at any time. The order of the declarations is part of the binary
/// interface.
class PhysicalProviderFactory {
public:
    PhysicalProviderFactory() = default;
    PhysicalProviderFactory(const PhysicalProviderFactory&) = delete;
    PhysicalProviderFactory& operator=(const PhysicalProviderFactory&) = delete;

    virtual ~PhysicalProviderFactory() = default;

    /// A new provider for the storage in which the IRI lies; it may outlive the factory. Throws Exception for
    /// an IRI that names no storage.
    virtual std::shared_ptr<IProvider> createProvider(const StorageIRI& iri) = 0;

    /// The IRI of the root of that storage.
    virtual StorageIRI getRootIRI(const StorageIRI& iri) = 0;
};

}  // namespace foundation::storage::provider
