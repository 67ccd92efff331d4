#pragma once

#include <gtest/gtest.h>

#include <foundation/storage/provider/IProvider.hpp>
#include <string>

namespace testsupport {

using foundation::storage::provider::IProvider;

/// Writes a file whole.
inline void put(IProvider& provider, const std::u16string& path, const std::string& content) {
    const auto writer = provider.openWrite(path);
    writer->write(content.data(), content.size());
    writer->commit();
}

/// Reads a file from byte `offset` to its end.
inline std::string get(IProvider& provider, const std::u16string& path, std::uint64_t offset = 0) {
    const auto reader = provider.openRead(path);
    std::string content(static_cast<std::size_t>(reader->size() - offset), '?');
    EXPECT_EQ(reader->read(offset, content.data(), content.size()), content.size());
    return content;
}

}  // namespace testsupport
