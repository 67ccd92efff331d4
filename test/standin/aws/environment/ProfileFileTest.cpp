#include <aws/core/config/AWSProfileConfigLoader.h>

#include <random>

#include "EnvironmentTest.hpp"

using Aws::Config::AWSConfigFileProfileConfigLoader;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

namespace {

using Regions = std::map<std::string, std::string>;  // of each profile

constexpr bool asCredentialsFile = false;
constexpr bool asConfigFile = true;

constexpr std::size_t largestFile = 4UL * 1024 * 1024;

class ProfileFile : public EnvironmentTest {
protected:
    /// Empty when the file isn't taken.
    Regions regions(const std::string& content, bool prefixed = asCredentialsFile) const {
        return regionsOf(write("profiles", content), prefixed);
    }

    static Regions regionsOf(const std::string& file, bool prefixed = asCredentialsFile) {
        AWSConfigFileProfileConfigLoader loader(file, prefixed);
        Regions regions;
        const bool loaded = loader.Load();
        EXPECT_EQ(loaded, !loader.GetProfiles().empty());
        for (const auto& [name, profile] : loader.GetProfiles())
            regions[name] = profile.GetRegion();
        return regions;
    }
};

/// One profile, and a comment that makes up the length.
std::string contentOf(std::size_t size) {
    std::string content = "[default]\nregion = a\n#";
    content.resize(size, '#');
    return content;
}

TEST_F(ProfileFile, NamesProfilesByPrefixOrWithout) {
    const std::string content =
        "[default]\nregion = a\n[x]\nregion = b\n[profile y]\nregion = c\n[ profile  z ]\nregion = d\n";
    EXPECT_THAT(regions(content, asCredentialsFile), ElementsAre(Pair("default", "a"), Pair("x", "b")));
    EXPECT_THAT(regions(content, asConfigFile),
                ElementsAre(Pair("default", "a"), Pair("y", "c"), Pair("z", "d")));
}

TEST_F(ProfileFile, HasKeysAndSettings) {
    AWSConfigFileProfileConfigLoader loader(
        write("profiles",
              "[default]\naws_access_key_id = KEY\naws_secret_access_key = a+b/c==\n"
              "aws_session_token = TOKEN\noutput = text\n"));
    ASSERT_TRUE(loader.Load());
    const auto& profile = loader.GetProfiles().at("default");
    EXPECT_EQ(profile.GetName(), "default");
    EXPECT_EQ(toString(profile.GetCredentials()), "KEY:a+b/c==:TOKEN");
    EXPECT_EQ(profile.GetValue("output"), "text");
    EXPECT_EQ(profile.GetValue("Output"), "");
}

TEST_F(ProfileFile, MayHaveIndentedAndNestedSettings) {
    AWSConfigFileProfileConfigLoader loader(
        write("profiles", "  [default]\n\tregion = a\ns3 =\n  addressing_style = path\noutput = text\n"));
    ASSERT_TRUE(loader.Load());
    const auto& profile = loader.GetProfiles().at("default");
    EXPECT_EQ(profile.GetRegion(), "a");
    EXPECT_EQ(profile.GetValue("s3"), "");
    EXPECT_EQ(profile.GetValue("addressing_style"), "path");
    EXPECT_EQ(profile.GetValue("output"), "text");
}

TEST_F(ProfileFile, HasCommentsAnywhere) {
    EXPECT_THAT(regions("# one\n; two\n[default] # three\nregion = a;four\n\n[x]#five\nregion = b # six"),
                ElementsAre(Pair("default", "a"), Pair("x", "b")));
}

TEST_F(ProfileFile, MayHaveTheLineEndsOfAnotherSystem) {
    EXPECT_THAT(regions("[default]\r\nregion = a\r\n\r\n[x]\r\nregion = b\r\n"),
                ElementsAre(Pair("default", "a"), Pair("x", "b")));
}

TEST_F(ProfileFile, HasItsSectionsOfOtherKindsPassedOver) {
    EXPECT_THAT(regions("[services s]\ns3 =\n  anything goes here\n[default]\nregion = a\n"),
                ElementsAre(Pair("default", "a")));
}

TEST_F(ProfileFile, IsReadUpToALineThatMakesNoSense) {
    EXPECT_THAT(regions("[default]\nregion = a\n[x]\nregion = b\nno sense\n[y]\nregion = c\n"),
                ElementsAre(Pair("default", "a")));
    EXPECT_THAT(regions("region = a\n[default]\nregion = b\n"), IsEmpty());
}

TEST_F(ProfileFile, MayHoldNulBytes) {
    using namespace std::string_literals;
    EXPECT_THAT(regions("[default]\nregion = a\0b\n"s), ElementsAre(Pair("default", "a")));
    EXPECT_THAT(regions("[def\0ault]\nregion = a\n[x]\nregion = b\n"s), ElementsAre(Pair("x", "b")));
    EXPECT_THAT(regions(std::string(100000, '\0')), IsEmpty());
}

TEST_F(ProfileFile, OfJunkHasNoProfileWithoutAName) {
    const std::string often = "[]=\n#ax \r\t";
    std::mt19937 random(1);
    for (std::size_t size = 1; size < 1024UL * 1024; size *= 2) {
        std::string junk(size, '\0');
        for (char& c : junk) {
            const auto number = random();
            c = number % 4 != 0 ? often[number / 4 % often.size()] : static_cast<char>(number >> 8);
        }
        EXPECT_EQ(regions(junk, asCredentialsFile).count(""), 0U);
        EXPECT_EQ(regions(junk, asConfigFile).count(""), 0U);
    }
}

TEST_F(ProfileFile, IsRefusedWhenHuge) {
    EXPECT_THAT(regions(contentOf(largestFile)), ElementsAre(Pair("default", "a")));
    EXPECT_THAT(regions(contentOf(largestFile + 1)), IsEmpty());
    EXPECT_THAT(regionsOf("/dev/zero"), IsEmpty());
}

TEST_F(ProfileFile, MayBeMissingOrAFolder) {
    EXPECT_THAT(regionsOf(home() / "missing"), IsEmpty());
    EXPECT_THAT(regionsOf(home()), IsEmpty());
    EXPECT_THAT(regionsOf(""), IsEmpty());
}

TEST_F(ProfileFile, IsForgottenWhenItCantBeReadAgain) {
    const auto file = write("profiles", "[default]\nregion = a\n");
    AWSConfigFileProfileConfigLoader loader(file);
    EXPECT_TRUE(loader.Load());
    std::filesystem::remove(file);
    EXPECT_FALSE(loader.Load());
    EXPECT_THAT(loader.GetProfiles(), IsEmpty());
}

}  // namespace
