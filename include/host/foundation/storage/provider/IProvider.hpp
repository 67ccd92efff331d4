#pragma once

#include <boost/date_time/posix_time/ptime.hpp>
#include <boost/optional/optional.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace foundation::storage::provider {

enum class EntryKind { File, Folder };

/// A file or a folder.
struct Entry {
    std::u16string name;  ///< last segment of its path, without slashes; empty for the root
    EntryKind kind = EntryKind::File;
    std::uint64_t size = 0;                 ///< bytes; 0 for a folder
    boost::posix_time::ptime lastModified;  ///< UTC; not_a_date_time for a folder
};

/// An open file that is read by ranges. Any number of threads may read at once. Nothing is locked: a file
/// that is replaced meanwhile gives bytes of both.
class IReader {
public:
    /// Bytes in the file when it was opened.
    virtual std::uint64_t size() const = 0;

    /// Reads `count` bytes that begin at byte `offset` into the buffer, fewer only where the file ends, and
    /// returns how many; 0 at the end and beyond. Every call asks the storage anew, so prefer few large ones.
    /// Throws when the storage gives another number of bytes than it should; the buffer may be changed then.
    virtual std::size_t read(std::uint64_t offset, char* buffer, std::size_t count) = 0;

    virtual ~IReader() = default;
};

/// A file being written. Nothing of it is seen in the storage before commit() returns. For one thread at a
/// time.
class IWriter {
public:
    /// Appends the bytes. Throws std::logic_error after commit() was called.
    virtual void write(const char* bytes, std::size_t count) = 0;

    /// Stores the file, whole, in place of one that is there. May be called once, also when it fails; a
    /// second call throws std::logic_error.
    virtual void commit() = 0;

    /// Without commit(), the storage stays as it was.
    virtual ~IWriter() = default;
};

/// The files of one storage.
///
/// Paths are UTF-16, separated by "/", and start at the root; the root is "/" or empty, and the "/" that
/// every other path begins with may be left out. They are used as they stand: dot segments mean nothing. Any
/// thread may call any operation at any time. A failure is an exception; a path that can't name what the
/// operation is for is a std::invalid_argument.
class IProvider {
public:
    /// The file or folder; none if there is neither. A path that ends with "/" only ever names a folder, of
    /// others the file comes first.
    virtual boost::optional<Entry> stat(const std::u16string& path) = 0;

    /// The direct children of a folder, in no particular order. A file and a folder may have one name. Leaves
    /// nothing out: when a child's name in the storage isn't UTF-8, so that no path leads to it, this throws
    /// a std::runtime_error that quotes the name in escaped form.
    virtual std::vector<Entry> list(const std::u16string& folder) = 0;

    /// Opens a file for reading; throws when it doesn't exist.
    virtual std::unique_ptr<IReader> openRead(const std::u16string& path) = 0;

    /// Begins a file, new or in place of an existing one. Asks nothing of the storage.
    virtual std::unique_ptr<IWriter> openWrite(const std::u16string& path) = 0;

    /// Removes a file; it is no error when there is none.
    virtual void remove(const std::u16string& path) = 0;

    virtual ~IProvider() = default;
};

}  // namespace foundation::storage::provider
