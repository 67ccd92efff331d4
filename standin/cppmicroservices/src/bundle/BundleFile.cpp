#include "bundle/BundleFile.hpp"

#include <fcntl.h>
#include <gelf.h>
#include <libelf.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace cppmicroservices::detail {

namespace {

class OpenFile {
public:
    // A pipe without a writer is opened at once, too.
    explicit OpenFile(const std::string& path)
        : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "can't be opened");
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { close(descriptor_); }

    int descriptor() const { return descriptor_; }

    bool isRegular() const {
        struct stat status;
        return fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
    }

private:
    int descriptor_;
};

GElf_Shdr headerOf(Elf_Scn* section) {
    GElf_Shdr header;
    if (!gelf_getshdr(section, &header)) throw std::runtime_error("has a damaged table of sections");
    return header;
}

/// libelf reads a section whole.
void requireReadable(Elf_Scn* section) {
    if (headerOf(section).sh_size > maximumSectionSize)
        throw std::runtime_error("has a section larger than " + std::to_string(maximumSectionSize) +
                                 " bytes where its resources or its sections' names are");
}

using ElfFile = std::unique_ptr<Elf, decltype(&elf_end)>;

ElfFile openElf(const OpenFile& file) {
    elf_version(EV_CURRENT);
    ElfFile elf(elf_begin(file.descriptor(), ELF_C_READ, nullptr), &elf_end);
    if (!elf || elf_kind(elf.get()) != ELF_K_ELF) throw std::runtime_error("isn't a shared library (ELF)");
    return elf;
}

Elf_Scn* findSection(Elf* elf, const std::string& wanted) {
    std::size_t names = 0;
    if (elf_getshdrstrndx(elf, &names) != 0) return nullptr;
    requireReadable(elf_getscn(elf, names));
    for (Elf_Scn* section = elf_nextscn(elf, nullptr); section; section = elf_nextscn(elf, section)) {
        const char* name = elf_strptr(elf, names, headerOf(section).sh_name);
        if (name && wanted == name) return section;
    }
    return nullptr;
}

}  // namespace

std::string readElfSection(const std::string& path, const std::string& section) {
    const OpenFile file(path);
    if (!file.isRegular()) throw std::runtime_error("isn't a regular file");
    const ElfFile elf = openElf(file);
    Elf_Scn* found = findSection(elf.get(), section);
    if (!found) throw std::runtime_error("has no section " + section + ", so it holds no bundle");
    requireReadable(found);
    const Elf_Data* data = elf_rawdata(found, nullptr);
    if (!data || !data->d_buf) throw std::runtime_error("has a section " + section + " that can't be read");
    return {static_cast<const char*>(data->d_buf), data->d_size};
}

namespace {

constexpr std::string_view manifestName = "/manifest.json";

struct ZipError {
    zip_error_t error;

    ZipError() { zip_error_init(&error); }
    ZipError(const ZipError&) = delete;
    ZipError& operator=(const ZipError&) = delete;
    ~ZipError() { zip_error_fini(&error); }
};

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using ArchiveFile = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

Archive openArchive(std::string_view bytes) {
    ZipError failure;
    const auto fail = [&] {
        return std::runtime_error(std::string("its resources aren't a zip archive: ") +
                                  zip_error_strerror(&failure.error));
    };
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &failure.error);
    if (!source) throw fail();
    Archive archive(zip_open_from_source(source, ZIP_RDONLY, &failure.error), &zip_discard);
    if (archive) return archive;
    zip_source_free(source);
    throw fail();
}

/// The name before "/manifest.json"; nothing for another entry.
std::optional<std::string> bundleFolder(std::string_view entry) {
    if (entry.size() <= manifestName.size()) return std::nullopt;
    const std::string_view folder = entry.substr(0, entry.size() - manifestName.size());
    if (entry.substr(folder.size()) != manifestName || folder.find('/') != std::string_view::npos)
        return std::nullopt;
    return std::string(folder);
}

struct Found {
    zip_uint64_t index;
    std::string folder;
};

Found findManifest(zip_t* archive) {
    std::optional<Found> found;
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(count); ++index) {
        const char* name = zip_get_name(archive, index, ZIP_FL_ENC_RAW);
        auto folder = name ? bundleFolder(name) : std::nullopt;
        if (!folder) continue;
        if (found) throw std::runtime_error("its resources have more than one manifest");
        found = Found{index, *std::move(folder)};
    }
    if (!found) throw std::runtime_error("its resources have no manifest");
    return *std::move(found);
}

/// Other methods take memory by what the archive says.
bool isModest(const zip_stat_t& status) {
    return (status.valid & ZIP_STAT_COMP_METHOD) &&
           (status.comp_method == ZIP_CM_STORE || status.comp_method == ZIP_CM_DEFLATE);
}

std::size_t declaredSize(zip_t* archive, zip_uint64_t index) {
    zip_stat_t status;
    zip_stat_init(&status);
    if (zip_stat_index(archive, index, 0, &status) != 0 || !(status.valid & ZIP_STAT_SIZE))
        throw std::runtime_error("its manifest has no size");
    if (!isModest(status)) throw std::runtime_error("its manifest is neither stored nor deflated");
    if (status.size > maximumManifestSize)
        throw std::runtime_error("its manifest is larger than " + std::to_string(maximumManifestSize) +
                                 " bytes");
    return static_cast<std::size_t>(status.size);
}

/// Asks for one byte more than there should be: at the true end libzip compares the checksum.
std::string unpack(zip_t* archive, zip_uint64_t index) {
    const std::size_t size = declaredSize(archive, index);
    const ArchiveFile file(zip_fopen_index(archive, index, 0), &zip_fclose);
    if (!file)
        throw std::runtime_error(std::string("its manifest can't be unpacked: ") + zip_strerror(archive));
    std::string text(size + 1, '\0');
    std::size_t filled = 0;
    while (filled < text.size()) {
        const zip_int64_t read = zip_fread(file.get(), text.data() + filled, text.size() - filled);
        if (read < 0)
            throw std::runtime_error(std::string("its manifest is damaged: ") +
                                     zip_file_strerror(file.get()));
        if (read == 0) break;
        filled += static_cast<std::size_t>(read);
    }
    if (filled != size) throw std::runtime_error("its manifest is of another size than the archive says");
    text.resize(size);
    return text;
}

}  // namespace

ManifestEntry readManifestEntry(std::string_view bytes) {
    const Archive archive = openArchive(bytes);
    Found found = findManifest(archive.get());
    return {std::move(found.folder), unpack(archive.get(), found.index)};
}

}  // namespace cppmicroservices::detail
