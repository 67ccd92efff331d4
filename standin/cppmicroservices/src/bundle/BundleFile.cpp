#include "bundle/BundleFile.hpp"

#include <fcntl.h>
#include <gelf.h>
#include <libelf.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <stdexcept>
#include <system_error>

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

}  // namespace cppmicroservices::detail
