#include "messages/ManifestJson.hpp"

#include <cppmicroservices/Any.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

using cppmicroservices::Any;
using cppmicroservices::AnyMap;
using nlohmann::json;

namespace {

TEST(ManifestJson, HoldsEveryKindOfValue) {
    AnyMap inner(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS);
    inner["deep"] = std::string("text");
    AnyMap manifest(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS);
    manifest["truth"] = false;
    manifest["whole"] = 7;
    manifest["half"] = 0.5;
    manifest["nothing"] = Any();
    manifest["list"] = std::vector<Any>{Any(1), Any(std::string("two"))};
    manifest["object"] = inner;
    EXPECT_EQ(s3vfs::jsonOf(manifest),
              json::parse(R"({"truth": false, "whole": 7, "half": 0.5, "nothing": null,
        "list": [1, "two"], "object": {"deep": "text"}})"));
}

TEST(ManifestJson, OfAnEmptyManifestIsAnObject) {
    EXPECT_EQ(s3vfs::jsonOf(AnyMap(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS)), json::object());
}

}  // namespace
