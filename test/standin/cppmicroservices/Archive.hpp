#pragma once

#include <zip.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// A zip archive of these entries, name and content, deflated where that is shorter.
inline std::string archiveOf(const std::vector<std::pair<std::string, std::string>>& entries) {
    zip_source_t* bytes = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(bytes);
    zip_t* archive = zip_open_from_source(bytes, ZIP_TRUNCATE, nullptr);
    for (const auto& [name, content] : entries)
        zip_file_add(archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0);
    if (zip_close(archive) != 0) throw std::runtime_error("can't write the archive");

    zip_stat_t status;
    zip_source_stat(bytes, &status);
    std::string result(static_cast<std::size_t>(status.size), '\0');
    zip_source_open(bytes);
    zip_source_read(bytes, result.data(), result.size());
    zip_source_close(bytes);
    zip_source_free(bytes);
    return result;
}

/// The archive with a 32-bit number of each entry's headers replaced: at `local` of the local one, and at
/// `central` of that in the central directory.
inline std::string withNumber(std::string archive, std::size_t local, std::size_t central,
                              std::uint32_t number) {
    const auto replace = [&](const std::string& signature, std::size_t offset) {
        for (auto at = archive.find(signature); at != std::string::npos; at = archive.find(signature, at + 1))
            for (unsigned byte = 0; byte < 4; ++byte)
                archive.at(at + offset + byte) = static_cast<char>(number >> (8 * byte));
    };
    replace(std::string("PK\x03\x04"), local);
    replace(std::string("PK\x01\x02"), central);
    return archive;
}

/// As if the entries had this size, unpacked.
inline std::string withDeclaredSize(std::string archive, std::uint32_t size) {
    return withNumber(std::move(archive), 22, 24, size);
}

/// As if the entries were kept so: method 0 is stored, 8 deflated, 14 LZMA; flag 1 is encrypted.
inline std::string withMethod(std::string archive, std::uint32_t method, std::uint32_t flags = 0) {
    return withNumber(std::move(archive), 6, 8, method << 16 | flags);
}

inline std::string withChecksum(std::string archive, std::uint32_t checksum) {
    return withNumber(std::move(archive), 14, 16, checksum);
}

}  // namespace test
