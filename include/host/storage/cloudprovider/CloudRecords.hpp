#pragma once

#include <boost/date_time/posix_time/ptime.hpp>

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>

namespace storage::cloudprovider {

/// One entry of a bucket.
struct EntryInfo {
    EntryInfo(std::string entryName, std::int64_t sizeInBytes, boost::posix_time::ptime modified)
        : name(std::move(entryName)), size(sizeInBytes), lastModified(modified) {}

    std::string name;                       ///< object key, or a common prefix ending in the delimiter; UTF-8
    std::int64_t size;                      ///< bytes, never negative; 0 for a common prefix
    boost::posix_time::ptime lastModified;  ///< UTC
};

/// Options of one listing call.
struct ListOptions {
    std::string Delimiter;           ///< empty: none, keys are listed flat
    std::int32_t MaxNumEntries = 0;  ///< most entries in one page; 0 or less leaves it to the service
};

/// One part of a multipart upload.
struct PartInfo {
    std::uint64_t Index = 0;   ///< position in the object, from 0
    std::uint64_t Offset = 0;  ///< first byte in the object
    std::uint64_t Size = 0;    ///< bytes
    std::string Tag;           ///< entity tag as the service returned it; empty when not yet known
};

namespace detail {

// Inserted in one piece and made without the stream, so its number base and locale don't show.
template <class CharT, class Traits>
std::basic_ostream<CharT, Traits>& insertText(std::basic_ostream<CharT, Traits>& out,
                                              const std::string& text) {
    std::basic_string<CharT, Traits> widened;
    widened.reserve(text.size());
    for (const char c : text)
        widened.push_back(out.widen(c));
    return out << widened;
}

}  // namespace detail

/// `ListOptions{Delimiter="/",MaxNumEntries=1000}`; nothing in the delimiter is escaped.
template <class CharT, class Traits>
std::basic_ostream<CharT, Traits>& operator<<(std::basic_ostream<CharT, Traits>& out,
                                              const ListOptions& options) {
    return detail::insertText(out, "ListOptions{Delimiter=\"" + options.Delimiter +
                                       "\",MaxNumEntries=" + std::to_string(options.MaxNumEntries) + "}");
}

/// `PartInfo{Index=1,Offset=0,Size=5242880,Tag="abc"}`; nothing in the tag is escaped.
template <class CharT, class Traits>
std::basic_ostream<CharT, Traits>& operator<<(std::basic_ostream<CharT, Traits>& out, const PartInfo& part) {
    return detail::insertText(out, "PartInfo{Index=" + std::to_string(part.Index) +
                                       ",Offset=" + std::to_string(part.Offset) +
                                       ",Size=" + std::to_string(part.Size) + ",Tag=\"" + part.Tag + "\"}");
}

}  // namespace storage::cloudprovider
