#include "FileSteps.hpp"

#include <algorithm>
#include <fl/i18n.hpp>

#include "Files.hpp"

namespace demo {

using foundation::storage::provider::Entry;
using foundation::storage::provider::EntryKind;
using foundation::storage::provider::IProvider;
namespace fs = std::filesystem;

namespace {

std::u16string pathOf(const fs::path& file) {
    return fl::i18n::to_ustring(file.string());
}

void write(IProvider& bucket, const fs::path& file) {
    const std::string content = readFile(file);
    const auto writer = bucket.openWrite(pathOf(file));
    writer->write(content.data(), content.size());
    writer->commit();
}

std::string read(IProvider& bucket, const fs::path& file, std::uint64_t offset, std::size_t count) {
    std::string content(count, '\0');
    content.resize(bucket.openRead(pathOf(file))->read(offset, content.data(), count));
    return content;
}

/// The paths of all files in a folder, which ends with "/", and below.
std::vector<std::u16string> filesIn(IProvider& bucket, const std::u16string& folder) {
    std::vector<std::u16string> files;
    for (const Entry& entry : bucket.list(folder)) {
        if (entry.kind == EntryKind::File) {
            files.push_back(folder + entry.name);
        } else {
            const auto below = filesIn(bucket, folder + entry.name + u"/");
            files.insert(files.end(), below.begin(), below.end());
        }
    }
    return files;
}

std::string countOf(std::size_t count, const Paths& files) {
    return std::to_string(count) + " of " + std::to_string(files.size());
}

}  // namespace

void fillBucket(IProvider& bucket, Report& report, const Paths& files) {
    report.step("fill the bucket with " + std::to_string(files.size()) + " files of this machine");
    for (const auto& file : files)
        write(bucket, file);
    report.wire();
}

void lookAround(IProvider& bucket, Report& report, const Paths& files) {
    report.step("stat, and list folder by folder");
    report.check(bucket.stat(u"/")->kind == EntryKind::Folder, "the bucket can be used");
    const auto entry = bucket.stat(pathOf(files.front()));
    report.check(entry && entry->size == fs::file_size(files.front()),
                 "stat tells the size of " + files.front().string());
    report.check(!bucket.stat(u"/no/such/file"), "stat finds nothing where nothing is");
    const auto found = filesIn(bucket, u"/").size();
    report.check(found == files.size(), "the folders hold " + countOf(found, files) + " files");
    for (const Entry& folder : bucket.list(u"/usr/include")) {
        if (folder.kind == EntryKind::Folder)
            report.say("folder /usr/include/" + fl::i18n::to_string(folder.name));
    }
    report.wire();
}

void readBack(IProvider& bucket, Report& report, const Paths& files) {
    report.step("read every file whole");
    const auto equal = std::count_if(files.begin(), files.end(), [&](const auto& file) {
        const std::string content = readFile(file);
        return read(bucket, file, 0, content.size() + 1) == content;
    });
    const auto count = static_cast<std::size_t>(equal);
    report.check(count == files.size(), countOf(count, files) + " files came back byte for byte");
    report.wire();
}

void readRange(IProvider& bucket, Report& report, const fs::path& file) {
    report.step("write a large file, and read 100000 bytes out of its middle");
    write(bucket, file);
    const std::string content = readFile(file);
    report.check(read(bucket, file, content.size() / 2, 100000) == content.substr(content.size() / 2, 100000),
                 "the range came byte for byte");
    report.wire();
}

void removeEverything(IProvider& bucket, Report& report) {
    report.step("remove everything");
    for (const auto& file : filesIn(bucket, u"/"))
        bucket.remove(file);
    report.check(filesIn(bucket, u"/").empty(), "the bucket is empty");
    report.wire();
}

}  // namespace demo
