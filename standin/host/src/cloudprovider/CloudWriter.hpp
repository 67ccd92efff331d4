#pragma once

#include "foundation/storage/provider/IProvider.hpp"
#include "storage/cloudprovider/CloudClient.hpp"

#include <fstream>
#include <memory>
#include <string>

namespace storage::cloudprovider {

/// Gathers an object in a temporary file and uploads it whole, in one request.
class CloudWriter : public foundation::storage::provider::IWriter {
public:
    CloudWriter(std::shared_ptr<CloudClient> client, std::string key);

    /// Throws std::runtime_error when the temporary file can't take the bytes.
    void write(const char* bytes, std::size_t count) override;

    void commit() override;

private:
    void requireOpen() const;

    const std::shared_ptr<CloudClient> client_;
    const std::string key_;
    std::fstream file_;  // closed by commit()
    std::uint64_t size_ = 0;
};

}  // namespace storage::cloudprovider
