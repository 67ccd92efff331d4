#include "store/Store.hpp"

#include <algorithm>
#include <tuple>

#include "operations/S3Error.hpp"

namespace s3server {
namespace {

// What the store's own records take for one object, part or upload, about.
constexpr std::uint64_t recordSize = 512;

template <class Uploads>
auto& findUpload(Uploads& uploads, const std::string& key, const std::string& id) {
    const auto found = uploads.find(id);
    if (found == uploads.end() || found->second.key != key)
        throw S3Error("NoSuchUpload").with("UploadId", id);
    return found->second;
}

const Object* pointee(const Objects& objects, const std::string& key) {
    const auto found = objects.find(key);
    return found == objects.end() ? nullptr : found->second.get();
}

}  // namespace

std::string BucketInfo::region() const {
    if (location.empty()) return "us-east-1";
    return location == "EU" ? "eu-west-1" : location;
}

SharedRoom Store::roomFor(const std::string& key, const Headers& metadata) {
    std::uint64_t size = recordSize + key.size();
    for (const auto& [name, value] : metadata)
        size += sizeof(Headers::value_type) + name.size() + value.size();
    return std::make_shared<const Room>(&memory_, size);
}

void Store::createBucket(const BucketInfo& info) {
    const std::lock_guard lock(mutex_);
    if (buckets_.count(info.name) != 0)
        throw S3Error("BucketAlreadyOwnedByYou").with("BucketName", info.name);
    buckets_[info.name].info = info;
}

void Store::deleteBucket(const std::string& bucket) {
    Bucket removed;
    const std::lock_guard lock(mutex_);
    Bucket& found = find(bucket);
    if (!found.objects.empty()) throw S3Error("BucketNotEmpty").with("BucketName", bucket);
    std::swap(removed, found);
    buckets_.erase(bucket);
}

BucketInfo Store::bucket(const std::string& bucket) const {
    const std::lock_guard lock(mutex_);
    return find(bucket).info;
}

std::vector<BucketInfo> Store::buckets() const {
    const std::lock_guard lock(mutex_);
    std::vector<BucketInfo> infos;
    infos.reserve(buckets_.size());
    for (const auto& [name, bucket] : buckets_)
        infos.push_back(bucket.info);
    return infos;
}

ObjectPointer Store::object(const std::string& bucket, const std::string& key) const {
    const std::lock_guard lock(mutex_);
    const Objects& objects = find(bucket).objects;
    const auto found = objects.find(key);
    if (found == objects.end()) throw S3Error("NoSuchKey").with("Key", key);
    return found->second;
}

// In all the members that drop an object, it is dropped after the lock: gigabytes take a while to free.

void Store::put(const std::string& bucket, const std::string& key, ObjectPointer object,
                const std::function<void(const Object*)>& check) {
    const std::lock_guard lock(mutex_);
    Objects& objects = find(bucket).objects;
    if (check) check(pointee(objects, key));
    objects[key].swap(object);
}

void Store::remove(const std::string& bucket, const std::string& key) {
    Objects::node_type removed;
    const std::lock_guard lock(mutex_);
    removed = find(bucket).objects.extract(key);
}

void Store::readObjects(const std::string& bucket, const std::function<void(const Objects&)>& read) const {
    const std::lock_guard lock(mutex_);
    read(find(bucket).objects);
}

void Store::open(const std::string& bucket, Upload upload) {
    const std::lock_guard lock(mutex_);
    Bucket& found = find(bucket);
    std::string id = upload.id;
    found.uploads.emplace(std::move(id), std::move(upload));
}

Upload Store::upload(const std::string& bucket, const std::string& key, const std::string& id) const {
    const std::lock_guard lock(mutex_);
    return findUpload(find(bucket).uploads, key, id);
}

std::vector<Upload> Store::uploads(const std::string& bucket) const {
    std::vector<Upload> uploads;
    {
        const std::lock_guard lock(mutex_);
        for (const auto& [id, upload] : find(bucket).uploads)
            uploads.push_back(upload);
    }
    std::sort(uploads.begin(), uploads.end(), [](const Upload& left, const Upload& right) {
        return std::tie(left.key, left.id) < std::tie(right.key, right.id);
    });
    return uploads;
}

void Store::putPart(const std::string& bucket, const std::string& key, const std::string& id, unsigned number,
                    std::shared_ptr<const Part> part) {
    const std::lock_guard lock(mutex_);
    findUpload(find(bucket).uploads, key, id).parts[number].swap(part);
}

void Store::complete(const std::string& bucket, const std::string& key, const std::string& id,
                     ObjectPointer object, const std::function<void(const Object*)>& check) {
    std::map<std::string, Upload>::node_type ended;
    const std::lock_guard lock(mutex_);
    Bucket& found = find(bucket);
    findUpload(found.uploads, key, id);
    if (check) check(pointee(found.objects, key));
    found.objects[key].swap(object);
    ended = found.uploads.extract(id);
}

void Store::abort(const std::string& bucket, const std::string& key, const std::string& id) {
    std::map<std::string, Upload>::node_type ended;
    const std::lock_guard lock(mutex_);
    Bucket& found = find(bucket);
    findUpload(found.uploads, key, id);
    ended = found.uploads.extract(id);
}

const Store::Bucket& Store::find(const std::string& bucket) const {
    const auto found = buckets_.find(bucket);
    if (found == buckets_.end()) throw S3Error("NoSuchBucket").with("BucketName", bucket);
    return found->second;
}

Store::Bucket& Store::find(const std::string& bucket) {
    return const_cast<Bucket&>(std::as_const(*this).find(bucket));
}

}  // namespace s3server
