#include "ElfFile.hpp"

#include <fcntl.h>
#include <gelf.h>
#include <unistd.h>

#include <stdexcept>

namespace testsupport {

namespace {

class ElfFile {
public:
    explicit ElfFile(const std::string& file) : descriptor_(::open(file.c_str(), O_RDONLY | O_CLOEXEC)) {
        elf_version(EV_CURRENT);
        elf_ = elf_begin(descriptor_, ELF_C_READ, nullptr);
        if (elf_kind(elf_) == ELF_K_ELF) return;
        close();
        throw std::runtime_error("'" + file + "' is no ELF file");
    }

    ElfFile(const ElfFile&) = delete;
    ElfFile& operator=(const ElfFile&) = delete;
    ~ElfFile() { close(); }

    /// Calls `visit` with each section and its header.
    template <typename Visit>
    void eachSection(Visit visit) const {
        for (Elf_Scn* section = elf_nextscn(elf_, nullptr); section != nullptr;
             section = elf_nextscn(elf_, section)) {
            GElf_Shdr header;
            gelf_getshdr(section, &header);
            visit(section, header);
        }
    }

    /// Without such a header, stacks are executable.
    bool hasHeaderForPlainStacks() const {
        std::size_t count = 0;
        elf_getphdrnum(elf_, &count);
        GElf_Phdr header;
        for (int i = 0; i < static_cast<int>(count); ++i)
            if (gelf_getphdr(elf_, i, &header) != nullptr && header.p_type == PT_GNU_STACK)
                return (header.p_flags & PF_X) == 0;
        return false;
    }

    std::string nameOf(const GElf_Shdr& header) const {
        std::size_t names = 0;
        elf_getshdrstrndx(elf_, &names);
        return elf_strptr(elf_, names, header.sh_name);
    }

    std::string text(std::size_t strings, std::size_t offset) const {
        return elf_strptr(elf_, strings, offset);
    }

private:
    void close() {
        elf_end(elf_);
        ::close(descriptor_);
    }

    int descriptor_;
    Elf* elf_ = nullptr;
};

bool isExported(const GElf_Sym& symbol) {
    return symbol.st_shndx != SHN_UNDEF && GELF_ST_BIND(symbol.st_info) != STB_LOCAL;
}

}  // namespace

std::vector<std::string> exportedSymbols(const std::string& file) {
    const ElfFile elf(file);
    std::vector<std::string> names;
    elf.eachSection([&](Elf_Scn* section, const GElf_Shdr& header) {
        if (header.sh_type != SHT_DYNSYM) return;
        Elf_Data* const symbols = elf_getdata(section, nullptr);
        GElf_Sym symbol;
        for (int i = 0; gelf_getsym(symbols, i, &symbol) != nullptr; ++i)
            if (isExported(symbol)) names.push_back(elf.text(header.sh_link, symbol.st_name));
    });
    return names;
}

bool wantsExecutableStacks(const std::string& file) {
    return !ElfFile(file).hasHeaderForPlainStacks();
}

Section readSection(const std::string& file, const std::string& name) {
    const ElfFile elf(file);
    std::vector<Section> found;
    elf.eachSection([&](Elf_Scn* section, const GElf_Shdr& header) {
        if (elf.nameOf(header) != name) return;
        const Elf_Data* const data = elf_rawdata(section, nullptr);
        found.push_back({std::string(static_cast<const char*>(data->d_buf), data->d_size),
                         (header.sh_flags & SHF_ALLOC) != 0});
    });
    if (found.size() != 1) throw std::runtime_error("'" + file + "' has not one section '" + name + "'");
    return found.front();
}

}  // namespace testsupport
