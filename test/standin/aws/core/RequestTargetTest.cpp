#include "core/RequestTarget.hpp"

#include <gtest/gtest.h>

using standin::aws::encodeTarget;

namespace {

struct PathCase {
    const char* path;
    const char* wire;
    const char* canonical;
};

constexpr PathCase pathCases[] = {
    {"", "/", "/"},
    {"/", "/", "/"},
    {"/b/dir/obj.txt", "/b/dir/obj.txt", "/b/dir/obj.txt"},
    {"/b/a b", "/b/a%20b", "/b/a%20b"},
    {"/b/a+b", "/b/a%2Bb", "/b/a%2Bb"},
    {"/b/a%20b", "/b/a%2520b", "/b/a%2520b"},
    {"/b/caf\xc3\xa9", "/b/caf%C3%A9", "/b/caf%C3%A9"},
    {"/b/a?b=c&d", "/b/a%3Fb=c&d", "/b/a%3Fb%3Dc%26d"},
    {"/b/a,b;c", "/b/a,b%3Bc", "/b/a%2Cb%3Bc"},
    {"/b/a:b@c$d", "/b/a:b@c$d", "/b/a%3Ab%40c%24d"},
    {"/b/~tilde_-.", "/b/~tilde_-.", "/b/~tilde_-."},
    {"/b/a*'()!", "/b/a%2A%27%28%29%21", "/b/a%2A%27%28%29%21"},
    {"/b/a\tb\nc\x01", "/b/a%09b%0Ac%01", "/b/a%09b%0Ac%01"},
    {"/b/a//b", "/b/a//b", "/b/a//b"},
    {"/b//lead", "/b//lead", "/b//lead"},
    {"/b/trail//", "/b/trail//", "/b/trail//"},
    {"/b/a/../b", "/b/a/../b", "/b/a/../b"},
    {"/b/.", "/b/.", "/b/."},
};

class PathText : public ::testing::TestWithParam<PathCase> {};

TEST_P(PathText, IsEncodedByteByByteAndKeepsItsSegments) {
    const auto target = encodeTarget(GetParam().path, "", {});
    EXPECT_EQ(target.wirePath, GetParam().wire);
    EXPECT_EQ(target.canonicalPath, GetParam().canonical);
}

INSTANTIATE_TEST_SUITE_P(RequestTarget, PathText, ::testing::ValuesIn(pathCases));

TEST(RequestTarget, SortsTheQueryByName) {
    const auto target = encodeTarget("/b", "", {{"prefix", "dir/"}, {"list-type", "2"}, {"delimiter", "/"}});
    EXPECT_EQ(target.onWire(), "/b?delimiter=%2F&list-type=2&prefix=dir%2F");
    EXPECT_EQ(target.canonicalQuery, "delimiter=%2F&list-type=2&prefix=dir%2F");
}

TEST(RequestTarget, EncodesQueryValuesWhole) {
    const auto target = encodeTarget("/b", "", {{"prefix", "a b+c%d/\xc3\xa9&x=y~*"}});
    EXPECT_EQ(target.wireQuery, "prefix=a%20b%2Bc%25d%2F%C3%A9%26x%3Dy~%2A");
}

TEST(RequestTarget, KeepsTheEqualsSignOfAnEmptyValue) {
    EXPECT_EQ(encodeTarget("/b", "", {{"delimiter", ""}}).wireQuery, "delimiter=");
}

TEST(RequestTarget, SendsASubresourceWithoutEqualsSignButSignsItWithOne) {
    const auto target = encodeTarget("/b/k", "uploads", {});
    EXPECT_EQ(target.onWire(), "/b/k?uploads");
    EXPECT_EQ(target.canonicalQuery, "uploads=");
}

TEST(RequestTarget, SortsASubresourceAmongTheSignedParameters) {
    const auto target = encodeTarget("/b", "uploads", {{"a", "1"}, {"z", "2"}});
    EXPECT_EQ(target.wireQuery, "uploads&a=1&z=2");
    EXPECT_EQ(target.canonicalQuery, "a=1&uploads=&z=2");
}

TEST(RequestTarget, HasNoQuestionMarkWithoutQuery) {
    EXPECT_EQ(encodeTarget("/b", "", {}).onWire(), "/b");
}

}  // namespace
