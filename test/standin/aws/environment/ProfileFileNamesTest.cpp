#include <aws/core/auth/AWSCredentialsProvider.h>
#include <pwd.h>
#include <unistd.h>

#include "EnvironmentTest.hpp"

using namespace Aws::Auth;

namespace {

std::string credentialsFile() {
    return ProfileConfigFileAWSCredentialsProvider::GetCredentialsProfileFilename();
}

class ProfileFileNames : public EnvironmentTest {};

TEST_F(ProfileFileNames, LieInTheHomeFolder) {
    EXPECT_EQ(credentialsFile(), home() / ".aws/credentials");
    EXPECT_EQ(GetConfigProfileFilename(), home() / ".aws/config");
    EXPECT_EQ(ProfileConfigFileAWSCredentialsProvider::GetProfileDirectory(), home() / ".aws");
}

TEST_F(ProfileFileNames, HaveOneSlashAfterTheHomeFolder) {
    environment.set("HOME", "/home/someone/");
    EXPECT_EQ(credentialsFile(), "/home/someone/.aws/credentials");
    environment.set("HOME", "/");
    EXPECT_EQ(credentialsFile(), "/.aws/credentials");
}

TEST_F(ProfileFileNames, LieInTheUsersHomeByTheUserDatabaseWithoutAVariable) {
    const passwd* const user = getpwuid(getuid());  // NOLINT(concurrency-mt-unsafe): there is one thread
    ASSERT_NE(user, nullptr);
    const std::string inHome = user->pw_dir + std::string("/.aws/credentials");
    environment.unset("HOME");
    EXPECT_EQ(credentialsFile(), inHome);
    environment.set("HOME", "");
    EXPECT_EQ(credentialsFile(), inHome);
}

TEST_F(ProfileFileNames, AreWhatTheirVariablesSay) {
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "some/keys");
    environment.set("AWS_CONFIG_FILE", "~/settings");
    EXPECT_EQ(credentialsFile(), "some/keys");
    EXPECT_EQ(ProfileConfigFileAWSCredentialsProvider::GetProfileDirectory(), "some");
    EXPECT_EQ(GetConfigProfileFilename(), "~/settings");
}

TEST_F(ProfileFileNames, MayHaveNoFolder) {
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "keys");
    EXPECT_EQ(ProfileConfigFileAWSCredentialsProvider::GetProfileDirectory(), "");
}

TEST_F(ProfileFileNames, AreTheUsualOnesWhenTheVariablesAreEmpty) {
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "");
    environment.set("AWS_CONFIG_FILE", "");
    EXPECT_EQ(credentialsFile(), home() / ".aws/credentials");
    EXPECT_EQ(GetConfigProfileFilename(), home() / ".aws/config");
}

TEST_F(ProfileFileNames, GoWithAProfileThatTheEnvironmentNames) {
    EXPECT_EQ(GetConfigProfileName(), "default");
    environment.set("AWS_PROFILE", "work");
    EXPECT_EQ(GetConfigProfileName(), "work");
    environment.set("AWS_DEFAULT_PROFILE", "home");
    EXPECT_EQ(GetConfigProfileName(), "home");
    environment.set("AWS_DEFAULT_PROFILE", "");
    EXPECT_EQ(GetConfigProfileName(), "work");
}

}  // namespace
