#pragma once

#include "foundation/storage/provider/IProvider.hpp"
#include "storage/cloudprovider/CloudClient.hpp"

#include <memory>
#include <string>

namespace storage::cloudprovider {

/// Reads an object by ranges. A read is divided so that no request asks for more than 8 MiB, which clients
/// hold in memory.
class CloudReader : public foundation::storage::provider::IReader {
public:
    /// `size` is that of the stored object, in bytes.
    CloudReader(std::shared_ptr<CloudClient> client, std::string key, std::uint64_t size);

    std::uint64_t size() const override { return size_; }

    /// Throws UnknownErrorException with the identifier "unexpected_length" when the client gives another
    /// number of bytes than it was asked for.
    std::size_t read(std::uint64_t offset, char* buffer, std::size_t count) override;

private:
    void readPiece(std::uint64_t offset, char* buffer, std::size_t count);

    const std::shared_ptr<CloudClient> client_;
    const std::string key_;
    const std::uint64_t size_;
};

}  // namespace storage::cloudprovider
