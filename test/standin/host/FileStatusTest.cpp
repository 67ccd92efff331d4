#include <fl/filesystem.hpp>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <fl/i18n.hpp>
#include <fstream>

#include "support/process/TemporaryFolder.hpp"

namespace {

using boost::posix_time::to_iso_extended_string;
using fl::filesystem::file_status;

class FileStatus : public testing::Test {
protected:
    FileStatus() { std::ofstream(file) << "text"; }

    void setTime(std::time_t seconds, long nanoseconds) const {
        const timespec times[] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
        ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    }

    file_status current() const { return fl::filesystem::status(file); }

    const testsupport::TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "status-\u00FC";
};

TEST_F(FileStatus, HasTheModificationTimeToTheMicrosecond) {
    setTime(1714532645, 123456789);
    EXPECT_TRUE(current().exists);
    EXPECT_EQ(to_iso_extended_string(current().modificationTime), "2024-05-01T03:04:05.123456");
}

TEST_F(FileStatus, HasTimesBeforeTheEpoch) {
    setTime(-1, 500000000);
    EXPECT_EQ(to_iso_extended_string(current().modificationTime), "1969-12-31T23:59:59.500000");
}

TEST_F(FileStatus, ComparesEqualUntilTheFileIsTouched) {
    setTime(1714532645, 123456000);
    const auto before = current().modificationTime;
    EXPECT_EQ(current().modificationTime, before);
    setTime(1714532645, 123457000);
    EXPECT_NE(current().modificationTime, before);
}

TEST_F(FileStatus, TellsAMissingFile) {
    const auto missing = fl::filesystem::status(file / "below" / "it");
    EXPECT_FALSE(missing.exists);
    EXPECT_TRUE(missing.modificationTime.is_not_a_date_time());
    EXPECT_EQ(missing.modificationTime, fl::filesystem::status("").modificationTime);
    EXPECT_NE(missing.modificationTime, current().modificationTime);
}

TEST_F(FileStatus, KnowsFolders) {
    EXPECT_TRUE(fl::filesystem::status(file.parent_path()).exists);
}

TEST_F(FileStatus, FindsAFileByItsNativeForm) {
    const auto native = fl::filesystem::detail::make_native_form(file.u16string(), true);
    EXPECT_EQ(native.native(), file.native());
    EXPECT_TRUE(fl::filesystem::status(native).exists);
}

TEST(NativeForm, IsUtf8) {
    using fl::filesystem::detail::make_native_form;
    EXPECT_EQ(make_native_form(u"/a\\b/\u00FC\U0001F600", true).native(), "/a\\b/\xC3\xBC\xF0\x9F\x98\x80");
    EXPECT_THROW(make_native_form(std::u16string(1, char16_t(0xD800)), true), fl::i18n::conversion_error);
}

}  // namespace
