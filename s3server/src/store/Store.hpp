#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "s3server/Headers.hpp"
#include "store/Bytes.hpp"
#include "text/Dates.hpp"

namespace s3server {

/// Of those that share it, the last gives it back.
using SharedRoom = std::shared_ptr<const Room>;

/// An object never changes; writing its key again puts another one in its place.
struct Object {
    Bytes bytes;
    /// Without quotes.
    std::string etag;
    /// The headers that come back with it: content-type, x-amz-meta-* and their like.
    Headers metadata;
    TimePoint lastModified;
    /// For all but the bytes, which have theirs.
    SharedRoom room = nullptr;
};
using ObjectPointer = std::shared_ptr<const Object>;
/// In the order of the keys' bytes, which is the order of UTF-8 text, too.
using Objects = std::map<std::string, ObjectPointer>;

struct Part {
    Bytes bytes;
    /// Raw, 16 bytes.
    std::string md5;
    TimePoint lastModified;
    SharedRoom room = nullptr;
};

/// A multipart upload under way.
struct Upload {
    std::string key;
    std::string id;
    Headers metadata;
    TimePoint initiated;
    std::map<unsigned, std::shared_ptr<const Part>> parts;
    SharedRoom room = nullptr;
};

struct BucketInfo {
    std::string name;
    /// As given when the bucket was made; empty for us-east-1.
    std::string location;
    TimePoint created;

    /// The region whose signatures the bucket takes.
    std::string region() const;
};

/// Buckets, objects and uploads. Every member may be called from any thread and does its work as a whole or
/// not at all. Throws S3Error: NoSuchBucket, NoSuchKey, NoSuchUpload and what is said below.
class Store {
public:
    explicit Store(std::uint64_t memoryLimit) : memory_(memoryLimit) {}

    Memory& memory() { return memory_; }
    /// Room for an object, a part or an upload apart from its bytes. Throws InsufficientStorage.
    SharedRoom roomFor(const std::string& key, const Headers& metadata);

    /// Throws BucketAlreadyOwnedByYou.
    void createBucket(const BucketInfo& info);
    /// Throws BucketNotEmpty; uploads under way go with the bucket.
    void deleteBucket(const std::string& bucket);
    BucketInfo bucket(const std::string& bucket) const;
    std::vector<BucketInfo> buckets() const;

    ObjectPointer object(const std::string& bucket, const std::string& key) const;
    /// Throws what `check` throws, which is given the object to be replaced, or null.
    void put(const std::string& bucket, const std::string& key, ObjectPointer object,
             const std::function<void(const Object*)>& check = {});
    /// Removes the object if there is one.
    void remove(const std::string& bucket, const std::string& key);
    /// Calls `read` with the bucket's objects while nothing can change them.
    void readObjects(const std::string& bucket, const std::function<void(const Objects&)>& read) const;

    void open(const std::string& bucket, Upload upload);
    Upload upload(const std::string& bucket, const std::string& key, const std::string& id) const;
    /// By key, then by upload id.
    std::vector<Upload> uploads(const std::string& bucket) const;
    void putPart(const std::string& bucket, const std::string& key, const std::string& id, unsigned number,
                 std::shared_ptr<const Part> part);
    /// Ends the upload and puts the object in its place, in one step.
    void complete(const std::string& bucket, const std::string& key, const std::string& id,
                  ObjectPointer object, const std::function<void(const Object*)>& check = {});
    void abort(const std::string& bucket, const std::string& key, const std::string& id);

private:
    struct Bucket {
        BucketInfo info;
        Objects objects;
        std::map<std::string, Upload> uploads;
    };

    const Bucket& find(const std::string& bucket) const;
    Bucket& find(const std::string& bucket);

    // Outlives all that takes room in it.
    Memory memory_;
    mutable std::mutex mutex_;
    std::map<std::string, Bucket> buckets_;
};

}  // namespace s3server
