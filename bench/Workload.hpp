#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

constexpr std::size_t smallSize = 4096;
constexpr std::size_t largeSize = std::size_t{8} * 1024 * 1024;
constexpr std::size_t listedKeys = 1000;

constexpr const char* smallKey = "bench/small";
constexpr const char* largeKey = "bench/large";      ///< twice largeSize; the range read is its second half
constexpr const char* writtenKey = "bench/written";  ///< what PUT writes
constexpr const char* listedPrefix = "bench/list/";

/// One of the measured operations.
struct Operation {
    std::string_view name;
    std::uint64_t amount;  ///< what one has to bring: bytes of content, or keys
    unsigned rounds;       ///< operations in one CPU measurement
    unsigned counted;      ///< operations in one instruction count
};

inline constexpr Operation head{"HEAD", 2 * largeSize, 2000, 200};
inline constexpr Operation getSmall{"GET-4KiB", smallSize, 2000, 200};
inline constexpr Operation getLarge{"GET-8MiB-range", largeSize, 60, 4};
inline constexpr Operation putLarge{"PUT-8MiB", largeSize, 20, 2};
inline constexpr Operation list{"LIST-1000", listedKeys, 100, 10};
inline constexpr std::array operations{head, getSmall, getLarge, putLarge, list};

/// Every fourth has blanks, which a listing's encoding writes in another way.
inline std::string keyToList(std::size_t number) {
    const std::string file = std::to_string(10000 + number) + ".parquet";
    return std::string(listedPrefix) + (number % 4 == 0 ? "measured values/part " : "measured-values/part-") +
           file;
}

/// Bytes without a pattern that anything could make use of.
inline std::string content(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    for (char& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24U);
    }
    return bytes;
}

}  // namespace bench
