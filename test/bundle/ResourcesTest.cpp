#include <gmock/gmock.h>
#include <zip.h>

#include <ctime>
#include <memory>
#include <nlohmann/json.hpp>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

#include "ElfFile.hpp"
#include "support/process/Process.hpp"

using namespace testsupport;
using nlohmann::json;
using ::testing::HasSubstr;

namespace {

constexpr const char* manifest = "com_quorvex_s3provider/manifest.json";

const json requiredManifest = json::parse(R"json({
  "bundle.activator": false,
  "bundle.symbolic_name": "com_quorvex_s3provider",
  "bundle.vendor": "Quorvex",
  "identifier": "orrery.remotedata.s3",
  "scheme": "s3",
  "zr": {
    "clientdir": "src/storage/s3provider",
    "component": {"attributes": "released", "name": "storage/s3provider", "type": "software"},
    "module": {"name": "s3provider"},
    "installpath": "lib"
  },
  "scr": {
    "version": 1,
    "components": [{
      "implementation-class": "storage::s3provider::S3ProviderFactoryV2",
      "inject-references": true,
      "properties": {"scheme": "s3"},
      "service": {"interfaces": ["foundation::storage::provider::PhysicalProviderFactory"]},
      "references": [{
        "name": "awsInitializer",
        "interface": "foundation::thirdpartylibmgmt::Initializer",
        "policy": "static",
        "target": "(thirdpartylibmgmt-library-name=aws-sdk-cpp)"
      }]
    }]
  }
})json");

// Zip archives keep local times.
int yearOf(std::time_t time) {
    std::tm local{};
    return localtime_r(&time, &local)->tm_year + 1900;
}

/// The zip archive in the bundle's section.
class Resources : public ::testing::Test {
protected:
    Resources() {
        zip_source_t* const source =
            zip_source_buffer_create(section.bytes.data(), section.bytes.size(), 0, nullptr);
        archive.reset(zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, nullptr));
        if (!archive) throw std::runtime_error("the section holds no zip archive");
    }

    std::vector<zip_stat_t> entries() const {
        std::vector<zip_stat_t> all(static_cast<std::size_t>(zip_get_num_entries(archive.get(), 0)));
        for (std::size_t i = 0; i < all.size(); ++i)
            zip_stat_index(archive.get(), i, 0, &all[i]);
        return all;
    }

    std::string read(const std::string& name) const {
        zip_stat_t entry{};
        zip_stat(archive.get(), name.c_str(), 0, &entry);
        std::string bytes(entry.size, '\0');
        const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(
            zip_fopen(archive.get(), name.c_str(), 0), zip_fclose);
        if (!file) throw std::runtime_error("there is no '" + name + "'");
        zip_fread(file.get(), bytes.data(), bytes.size());
        return bytes;
    }

    const Section section = readSection(BUNDLE_FILE, ".us_resources");
    std::unique_ptr<zip_t, decltype(&zip_discard)> archive{nullptr, zip_discard};
};

TEST_F(Resources, AreTheBundlesFolderAndItsDeflatedManifest) {
    const auto all = entries();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_STREQ(all[0].name, "com_quorvex_s3provider/");
    EXPECT_EQ(all[0].size, 0u);
    EXPECT_STREQ(all[1].name, manifest);
    EXPECT_EQ(all[1].comp_method, ZIP_CM_DEFLATE);
}

TEST_F(Resources, HoldTheManifestThatTheHostExpects) {
    EXPECT_EQ(json::parse(read(manifest)), requiredManifest);
}

TEST_F(Resources, AreLoadedWithTheLibrary) {
    EXPECT_TRUE(section.loaded);
}

TEST_F(Resources, LeaveStacksAsTheyAre) {
    EXPECT_FALSE(wantsExecutableStacks(BUNDLE_FILE));
}

TEST_F(Resources, TellNothingOfWhoBuiltThemAndWhen) {
    for (const zip_stat_t& entry : entries()) {
        for (const auto place : {ZIP_FL_LOCAL, ZIP_FL_CENTRAL})
            EXPECT_EQ(zip_file_extra_fields_count(archive.get(), entry.index, place), 0) << entry.name;
        EXPECT_EQ(yearOf(entry.mtime), 1980) << entry.name;
    }
}

TEST(ObjectFormats, OtherThanElfAreRefusedWithWhatToInstall) {
    const auto configured = run({CMAKE_PROGRAM, "-DMODULES=" CMAKE_MODULES, "-DCMAKE_EXECUTABLE_FORMAT=MACHO",
                                 "-DS3PROVIDER_CPPMICROSERVICES_IS_STANDIN=ON", "-P", WITHOUT_FRAMEWORK},
                                {}, "/");
    EXPECT_NE(configured.status, 0);
    const std::string said = std::regex_replace(configured.err, std::regex("\\s+"), " ");
    EXPECT_THAT(said, HasSubstr("here they are 'MACHO': install CppMicroServices 3 with its Declarative "
                                "Services, and set CMAKE_PREFIX_PATH to where it is"));
}

}  // namespace
