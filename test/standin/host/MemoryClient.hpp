#pragma once

#include <istream>
#include <map>
#include <mutex>
#include <ostream>
#include <set>
#include <sstream>
#include <storage/cloudprovider/CloudClient.hpp>
#include <storage/cloudprovider/CloudException.hpp>
#include <storage/cloudprovider/utils.hpp>
#include <string>
#include <vector>

namespace testsupport {

/// A bucket in memory that lists like S3, remembers what it is asked, and misbehaves as told. Of uploads
/// in parts it remembers that it was asked, and does nothing.
class MemoryClient : public storage::cloudprovider::CloudClient {
public:
    using EntryInfo = storage::cloudprovider::EntryInfo;
    using PartInfo = storage::cloudprovider::PartInfo;

    static constexpr long long modified = 1714532645678;  ///< of every object, in milliseconds

    std::map<std::string, std::string> objects;
    std::size_t pageSize = 1000;
    bool emptyPageFirst = false;                       ///< every listing begins with a page without entries
    boost::optional<std::vector<std::string>> listed;  ///< names on every page, whatever is asked for
    std::string lastToken;                             ///< follows every page that would be the last
    bool rootIsValid = true;
    long long downloadSurplus = 0;   ///< bytes given beyond those asked for, or kept back
    std::vector<std::string> calls;  ///< as `download key 0-9`

    boost::optional<EntryInfo> stat(const std::string& key) override {
        note("stat " + key);
        const auto found = objects.find(key);
        if (found == objects.end()) return boost::none;
        return infoOf(key);
    }

    void checkRootValidity(const std::string&) override {
        note("checkRootValidity");
        if (!rootIsValid) throw storage::cloudprovider::InvalidLocationException(std::nullopt);
    }

    std::vector<EntryInfo> list(const std::string& prefix, std::string& token,
                                const storage::cloudprovider::ListOptions& options) override {
        note("list " + prefix);
        if (listed) return everyPage(token);
        if (emptyPageFirst && token.empty()) {
            token = "after nothing";
            return {};
        }
        const auto names = namesBelow(prefix, options.Delimiter);
        auto next = token == "after nothing" ? names.begin() : names.upper_bound(token);
        std::vector<EntryInfo> page;
        const auto limit = options.MaxNumEntries > 0 ? std::size_t(options.MaxNumEntries) : pageSize;
        for (; next != names.end() && page.size() < limit; ++next)
            page.push_back(infoOf(*next));
        token = next == names.end() ? lastToken : page.back().name;
        return page;
    }

    void remove(const std::string& key) override {
        note("remove " + key);
        objects.erase(key);
    }

    void download(const std::string& key, std::ostream& out, std::uint64_t start,
                  std::uint64_t end) override {
        note("download " + key + " " + std::to_string(start) + "-" + std::to_string(end));
        const std::string& object = objects.at(key);
        std::string bytes = start < end ? object.substr(start, end - start + 1) : object;
        bytes.resize(static_cast<std::size_t>(static_cast<long long>(bytes.size()) + downloadSurplus), '!');
        // In two pieces and a single byte, as any client may write.
        const auto half = static_cast<std::streamsize>(bytes.size() / 2);
        out.write(bytes.data(), half);
        if (bytes.empty()) return;
        out.put(bytes[static_cast<std::size_t>(half)]);
        out.write(bytes.data() + half + 1, static_cast<std::streamsize>(bytes.size()) - half - 1);
    }

    void upload(const std::string& key, std::istream& in, std::uint64_t size) override {
        note("upload " + key + " " + std::to_string(size));
        std::ostringstream content;
        content << in.rdbuf();
        objects[key] = content.str();
    }

    std::vector<PartInfo> listParts(const std::string& key) override {
        note("listParts " + key);
        return {};
    }

    std::string startMultipartUpload(const std::string& key, const std::string&) override {
        note("startMultipartUpload " + key);
        return "id";
    }

    std::string uploadPart(const std::string& key, const std::string& uploadId, const PartInfo& info,
                           std::istream&) override {
        note("uploadPart " + key + " " + uploadId + " " + std::to_string(info.Index));
        return "tag";
    }

    std::string reusePart(const std::string& key, const std::string& uploadId,
                          const PartInfo& info) override {
        note("reusePart " + key + " " + uploadId + " " + std::to_string(info.Index));
        return "tag";
    }

    void abortMultipartUpload(const std::string& key, const std::string& uploadId) override {
        note("abortMultipartUpload " + key + " " + uploadId);
    }

    void completeMultipartUpload(const std::string& key, const std::string& uploadId,
                                 const std::vector<PartInfo>& parts) override {
        note("completeMultipartUpload " + key + " " + uploadId + " " + std::to_string(parts.size()));
    }

private:
    void note(std::string call) {
        const std::lock_guard lock(mutex_);
        calls.push_back(std::move(call));
    }

    std::vector<EntryInfo> everyPage(std::string& token) const {
        std::vector<EntryInfo> page;
        for (const std::string& name : *listed)
            page.push_back(infoOf(name));
        token = lastToken;
        return page;
    }

    EntryInfo infoOf(const std::string& name) const {
        const auto found = objects.find(name);
        const std::size_t size = found == objects.end() ? 0 : found->second.size();
        return {name, static_cast<std::int64_t>(size), storage::cloudprovider::utils::long2Ptime(modified)};
    }

    std::set<std::string> namesBelow(const std::string& prefix, const std::string& delimiter) const {
        std::set<std::string> names;
        for (const auto& [key, content] : objects) {
            if (key.compare(0, prefix.size(), prefix) != 0) continue;
            const auto cut = delimiter.empty() ? std::string::npos : key.find(delimiter, prefix.size());
            names.insert(cut == std::string::npos ? key : key.substr(0, cut + delimiter.size()));
        }
        return names;
    }

    std::mutex mutex_;  // guards calls
};

}  // namespace testsupport
