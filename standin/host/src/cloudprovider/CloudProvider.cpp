#include "cloudprovider/CloudProvider.hpp"

#include "cloudprovider/CloudReader.hpp"
#include "cloudprovider/CloudWriter.hpp"
#include "cloudprovider/Paths.hpp"
#include "storage/cloudprovider/CloudException.hpp"

#include <utility>

namespace storage::cloudprovider {

using foundation::storage::provider::Entry;
using foundation::storage::provider::EntryKind;
using foundation::storage::provider::IReader;
using foundation::storage::provider::IWriter;

namespace {

Entry fileEntry(const EntryInfo& object) {
    return {nameOf(object.name), EntryKind::File, static_cast<std::uint64_t>(object.size),
            object.lastModified};
}

Entry folderEntry(const std::string& prefix) {
    return {nameOf(prefix), EntryKind::Folder, 0, {}};
}

Entry entryOf(const EntryInfo& info) {
    return info.name.back() == '/' ? folderEntry(info.name) : fileEntry(info);
}

bool beginsWith(const std::string& name, const std::string& prefix) {
    return name.compare(0, prefix.size(), prefix) == 0;
}

/// Whether the name is one segment longer than the prefix; a folder's has "/" behind it.
bool isChild(const std::string& name, const std::string& prefix) {
    return name.size() > prefix.size() && beginsWith(name, prefix) &&
           name.find('/', prefix.size()) >= name.size() - 1;
}

void require(bool asExpected, const char16_t* identifier) {
    if (!asExpected) throw UnknownErrorException(CloudException::ExceptionContext(identifier));
}

/// The page that the token stands for, and in its place the next one's. The same again would be asked for
/// without end.
std::vector<EntryInfo> takePage(CloudClient& client, const std::string& prefix, std::string& token,
                                const ListOptions& options) {
    const std::string taken = token;
    auto page = client.list(prefix, token, options);
    require(token.empty() || token != taken, u"unexpected_token");
    return page;
}

}  // namespace

CloudProvider::CloudProvider(std::shared_ptr<CloudClient> client, bool checkRoot)
    : client_(std::move(client)), checkRoot_(checkRoot) {}

boost::optional<Entry> CloudProvider::stat(const std::u16string& path) {
    const std::string key = keyOf(path);
    if (key.empty()) {
        if (checkRoot_) client_->checkRootValidity("/");
        return folderEntry("");
    }
    if (key.back() != '/') {
        if (const auto object = client_->stat(key)) return fileEntry(*object);
    }
    const std::string prefix = prefixOf(path);
    if (anyKeyBelow(prefix)) return folderEntry(prefix);
    return boost::none;
}

std::vector<Entry> CloudProvider::list(const std::u16string& folder) {
    const std::string prefix = prefixOf(folder);
    std::vector<Entry> children;
    std::string token;
    do {
        for (const EntryInfo& info : takePage(*client_, prefix, token, {"/", 0})) {
            // The folder's own marker, an object of its name, isn't in it.
            if (info.name == prefix) continue;
            require(isChild(info.name, prefix), u"unexpected_entry");
            children.push_back(entryOf(info));
        }
    } while (!token.empty());
    return children;
}

std::unique_ptr<IReader> CloudProvider::openRead(const std::u16string& path) {
    std::string key = fileKeyOf(path);
    const auto object = client_->stat(key);
    if (!object) throw ResourceNotFoundException(CloudException::ExceptionContext(u"no_such_key"));
    return std::make_unique<CloudReader>(client_, std::move(key), static_cast<std::uint64_t>(object->size));
}

std::unique_ptr<IWriter> CloudProvider::openWrite(const std::u16string& path) {
    return std::make_unique<CloudWriter>(client_, fileKeyOf(path));
}

void CloudProvider::remove(const std::u16string& path) {
    client_->remove(fileKeyOf(path));
}

// A page may be empty and yet not the last.
bool CloudProvider::anyKeyBelow(const std::string& prefix) const {
    std::string token;
    do {
        const auto page = takePage(*client_, prefix, token, {"", 1});
        if (page.empty()) continue;
        require(beginsWith(page.front().name, prefix), u"unexpected_entry");
        return true;
    } while (!token.empty());
    return false;
}

}  // namespace storage::cloudprovider
