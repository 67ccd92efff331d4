#include <gmock/gmock.h>

#include "docs/DocumentedVariables.hpp"

using docs::Names;
using ::testing::ContainerEq;

namespace {

/// What libproxy reads.
const Names readByLibraries = {"http_proxy", "https_proxy", "HTTP_PROXY", "HTTPS_PROXY"};

TEST(Configuration, DocumentsExactlyTheVariablesThatAreRead) {
    Names read = readByLibraries;
    for (const char* const folder : {"src", "include", "standin", "s3server", "s3vfs", "demo"})
        read.merge(docs::namesBelow(folder, docs::variableIn('"')));
    EXPECT_THAT(docs::documentedVariables(), ContainerEq(read));
}

TEST(Configuration, OfAServerOfYoursIsDocumentedAsItIsRead) {
    const auto variables = [](const char* file, const char* pattern) {
        return docs::namesIn(docs::read(docs::sources / file), std::regex(pattern));
    };
    const Names read = variables("test/conformance/targets/ConfiguredTarget.cpp",
                                 R"re((?:optional|required)\("([A-Z_]+)")re");
    EXPECT_THAT(variables("docs/integration.md", "`S3PROVIDER_TEST_([A-Z_]+)`"), ContainerEq(read));
    EXPECT_THAT(variables("bench/Target.cpp", "\"S3PROVIDER_TEST_([A-Z_]+)\""), ::testing::IsSubsetOf(read));
}

}  // namespace
