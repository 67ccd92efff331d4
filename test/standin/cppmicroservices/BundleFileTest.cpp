#include <cppmicroservices/SharedLibraryException.h>
#include <fcntl.h>
#include <gelf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libelf.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "Archive.hpp"
#include "Phrases.hpp"
#include "support/process/StartedFramework.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace {

using namespace cppmicroservices;
using testing::HasSubstr;
using testing::StartsWith;

/// An ELF file with one section of ours and the names of sections. No loader takes it for a library.
void writeElf(const std::string& path, const std::string& sectionName, std::string content) {
    std::string names = '\0' + sectionName + '\0' + ".shstrtab" + '\0';
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    elf_version(EV_CURRENT);
    Elf* elf = elf_begin(file, ELF_C_WRITE, nullptr);
    gelf_newehdr(elf, ELFCLASS64);
    const auto addSection = [elf](std::string& bytes, Elf64_Word name, Elf64_Word type) {
        Elf_Scn* section = elf_newscn(elf);
        Elf_Data* data = elf_newdata(section);
        data->d_buf = bytes.data();
        data->d_size = bytes.size();
        data->d_align = 1;
        GElf_Shdr header;
        gelf_getshdr(section, &header);
        header.sh_name = name;
        header.sh_type = type;
        gelf_update_shdr(section, &header);
        return elf_ndxscn(section);
    };
    addSection(content, 1, SHT_PROGBITS);
    const auto namesIndex = addSection(names, static_cast<Elf64_Word>(sectionName.size() + 2), SHT_STRTAB);
    GElf_Ehdr header;
    gelf_getehdr(elf, &header);
    header.e_type = ET_DYN;
    header.e_machine = EM_X86_64;
    header.e_shstrndx = static_cast<Elf64_Half>(namesIndex);
    gelf_update_ehdr(elf, &header);
    if (elf_update(elf, ELF_C_WRITE) < 0) throw std::runtime_error(elf_errmsg(-1));
    elf_end(elf);
    close(file);
}

/// Lets a section of such a file say that it has this many bytes; the file has them, as a hole.
void growSection(const std::string& path, std::uint64_t number, std::uint64_t size) {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    Elf64_Ehdr header;
    file.read(reinterpret_cast<char*>(&header), sizeof header);
    file.seekp(static_cast<std::streamoff>(header.e_shoff + number * sizeof(Elf64_Shdr) +
                                           offsetof(Elf64_Shdr, sh_size)));
    file.write(reinterpret_cast<const char*>(&size), sizeof size);
    file.close();
    std::filesystem::resize_file(path, std::filesystem::file_size(path) + size);
}

class BundleFile : public testing::Test {
protected:
    std::string path(const std::string& name) const { return folder_.path() / name; }

    std::string errorOfInstalling(const std::string& file) {
        try {
            framework_.install(file);
            return "none";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

    std::string errorOfStarting(const std::string& file) {
        Bundle bundle = framework_.install(file);
        try {
            bundle.Start();
            return "none";
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(bundle.GetState(), Bundle::STATE_INSTALLED);
            return error.what();
        }
    }

    const testsupport::TemporaryFolder folder_;
    testsupport::StartedFramework framework_;
};

TEST_F(BundleFile, NeedsToBeThere) {
    EXPECT_EQ(errorOfInstalling(path("none.so")),
              "can't install the bundle " + path("none.so") + ": can't be opened: No such file or directory");
}

TEST_F(BundleFile, NeedsToBeAnElfFile) {
    std::ofstream(path("text.so")) << "just a text";
    std::ofstream(path("empty.so")).flush();
    for (const char* name : {"text.so", "empty.so"})
        EXPECT_EQ(errorOfInstalling(path(name)),
                  "can't install the bundle " + path(name) + ": isn't a shared library (ELF)");
    EXPECT_THAT(errorOfInstalling(folder_.path()), StartsWith("can't install the bundle "));
}

TEST_F(BundleFile, IsNotWaitedForWhenItIsAPipe) {
    ASSERT_EQ(mkfifo(path("pipe.so").c_str(), 0600), 0);
    EXPECT_EQ(errorOfInstalling(path("pipe.so")),
              "can't install the bundle " + path("pipe.so") + ": isn't a regular file");
}

TEST_F(BundleFile, NeedsResources) {
    writeElf(path("plain.so"), ".other", "content");
    EXPECT_THAT(errorOfInstalling(path("plain.so")), HasSubstr("has no section .us_resources"));
}

TEST_F(BundleFile, NeedsResourcesThatAreAnArchive) {
    writeElf(path("odd.so"), ".us_resources", "no archive");
    EXPECT_THAT(errorOfInstalling(path("odd.so")), HasSubstr("its resources aren't a zip archive"));
}

TEST_F(BundleFile, NeedsAManifestThatIsUnderstood) {
    writeElf(path("bad.so"), ".us_resources", test::archiveOf({{"bad/manifest.json", "{}"}}));
    EXPECT_EQ(errorOfInstalling(path("bad.so")),
              "can't install the bundle " + path("bad.so") +
                  ": its manifest isn't understood: 'bundle.symbolic_name' is missing");
}

TEST_F(BundleFile, IsNotReadWhereASectionIsHuge) {
    constexpr std::uint64_t gigabytes = std::uint64_t{3} << 30;
    for (const std::uint64_t section : {1u, 2u}) {
        const std::string file = path(std::to_string(section) + ".so");
        writeElf(file, ".us_resources", test::archiveOf({{"huge/manifest.json", "{}"}}));
        growSection(file, section, gigabytes);
        EXPECT_THAT(errorOfInstalling(file), HasSubstr("has a section larger than 16777216 bytes"))
            << section;
    }
}

TEST_F(BundleFile, IsRefusedWhenItIsCutOff) {
    const auto size = std::filesystem::file_size(GREETER_BUNDLE);
    for (std::uintmax_t eighths = 0; eighths < 8; ++eighths) {
        const std::string file = path(std::to_string(eighths) + ".so");
        std::filesystem::copy_file(GREETER_BUNDLE, file);
        std::filesystem::resize_file(file, size * eighths / 8);
        EXPECT_THAT(errorOfInstalling(file), StartsWith("can't install the bundle ")) << eighths;
    }
}

TEST_F(BundleFile, IsLoadedFromTheFolderThatItWasInstalledFrom) {
    const auto before = std::filesystem::current_path();
    std::filesystem::copy_file(GREETER_BUNDLE, path("copy.so"));
    std::filesystem::current_path(folder_.path());
    Bundle bundle = framework_.install("copy.so");
    std::filesystem::current_path(before);
    EXPECT_EQ(bundle.GetLocation(), "copy.so");
    EXPECT_NO_THROW(bundle.Start());
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE);
}

TEST_F(BundleFile, IsNotStartedWhenItCannotBeLoaded) {
    writeElf(path("unloadable.so"), ".us_resources",
             test::archiveOf({{"unloadable/manifest.json", R"({"bundle.symbolic_name": "unloadable"})"}}));
    Bundle bundle = framework_.install(path("unloadable.so"));
    try {
        bundle.Start();
        FAIL() << "it was loaded";
    } catch (const SharedLibraryException& error) {
        EXPECT_EQ(error.GetBundle(), bundle);
        EXPECT_THAT(error.what(), HasSubstr("can't load " + path("unloadable.so")));
    }
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_INSTALLED);
}

TEST_F(BundleFile, IsNotStartedWhenAComponentsFunctionIsMissing) {
    EXPECT_EQ(errorOfStarting(NOBODY_BUNDLE),
              std::string(NOBODY_BUNDLE) + " exports no function NewInstance_test_Nobody");
}

TEST_F(BundleFile, IsNotStartedWhenItTakesNoContext) {
    EXPECT_EQ(errorOfStarting(UNSET_BUNDLE),
              std::string(UNSET_BUNDLE) + " exports no function _us_set_bundle_context_instance_unset");
}

TEST_F(BundleFile, TellsTheLogWhyAComponentIsNotActive) {
    framework_.start(GREETER_BUNDLE);
    test::registerPhrase(framework_.context(), "fail");
    EXPECT_EQ(framework_.log(), "component test::PoliteGreeter can't be activated: nothing polite to say\n");
}

TEST_F(BundleFile, TellsTheLogWhyAComponentIsNotDeactivated) {
    Bundle bundle = framework_.start(GREETER_BUNDLE);
    const auto journal = std::make_shared<test::Journal>();
    test::registerPhrase(framework_.context(), "stay", journal);
    bundle.Stop();
    EXPECT_EQ(framework_.log(), "component test::PoliteGreeter can't be deactivated: a guest is here\n");
    EXPECT_THAT(journal->events(), testing::ElementsAre("made", "activated", "destroyed"));
}

TEST_F(BundleFile, HasAComponentNotActivatedThatDoesNotProvideItsInterfaces) {
    framework_.start(MISFIT_BUNDLE);
    const auto journal = std::make_shared<test::Journal>();
    test::registerPhrase(framework_.context(), "hello", journal);
    EXPECT_EQ(framework_.log(),
              "component test::Misfit can't be activated: it doesn't provide test::Greeter\n");
    EXPECT_THAT(journal->events(), testing::ElementsAre("made", "destroyed"));
}

TEST_F(BundleFile, HasItsComponentMadeBeforeAnybodyAsksForIt) {
    framework_.start(GREETER_BUNDLE);
    const auto journal = std::make_shared<test::Journal>();
    test::registerPhrase(framework_.context(), "hello", journal);
    EXPECT_THAT(journal->events(), testing::ElementsAre("made", "activated"));
}

}  // namespace
