#include "bundle/Manifest.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "Archive.hpp"
#include "bundle/BundleFile.hpp"

namespace {

using namespace cppmicroservices;
using namespace cppmicroservices::detail;
using test::archiveOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

std::string manifestErrorOf(const std::string& archive) {
    try {
        readManifest(archive);
        return "none";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

std::string manifestErrorOfText(const std::string& manifest) {
    return manifestErrorOf(archiveOf({{"bundle/manifest.json", manifest}}));
}

/// A manifest named "bundle" whose "scr" is this.
std::string withScr(const std::string& scr) {
    return R"({"bundle.symbolic_name": "bundle", "scr": )" + scr + "}";
}

std::string withComponent(const std::string& members) {
    return withScr(R"({"version": 1, "components": [{)" + members + "}]}");
}

TEST(Manifest, IsReadFromItsArchive) {
    const Manifest manifest = readManifest(archiveOf({{"bundle/", ""}, {"bundle/manifest.json", R"({
        "bundle.symbolic_name": "bundle", "bundle.version": "1.2.3", "scheme": "s3", "unheard.of": null})"}}));
    EXPECT_EQ(manifest.symbolicName, "bundle");
    EXPECT_EQ(manifest.version, "1.2.3");
    EXPECT_EQ(any_cast<std::string>(manifest.headers.at("scheme")), "s3");
    EXPECT_TRUE(manifest.headers.at("unheard.of").Empty());
    EXPECT_THAT(manifest.components, IsEmpty());
}

TEST(Manifest, DescribesItsComponents) {
    const Manifest manifest = readManifest(archiveOf({{"bundle/manifest.json", withComponent(R"json(
        "implementation-class": "a::B", "inject-references": true, "properties": {"scheme": "s3", "speed": 3},
        "service": {"interfaces": ["a::I", "a::J"]},
        "references": [{"name": "r", "interface": "a::R", "policy": "static", "cardinality": "1..1",
                        "target": "(x=y)"}, {"name": "s", "interface": "a::S"}])json")}}));
    ASSERT_THAT(manifest.components, SizeIs(1));
    const ComponentDescription& component = manifest.components[0];
    EXPECT_EQ(component.name, "a::B");
    EXPECT_EQ(component.implementationClass, "a::B");
    EXPECT_THAT(component.interfaces, ElementsAre("a::I", "a::J"));
    EXPECT_EQ(any_cast<std::string>(component.properties.at("scheme")), "s3");
    EXPECT_EQ(any_cast<int>(component.properties.at("speed")), 3);
    ASSERT_THAT(component.references, SizeIs(2));
    EXPECT_EQ(component.references[0].name, "r");
    EXPECT_EQ(component.references[0].interfaceName, "a::R");
    EXPECT_EQ(component.references[0].target.ToString(), "(x=y)");
    EXPECT_FALSE(component.references[1].target);
}

TEST(Manifest, KeepsTheTypesOfItsValues) {
    const Manifest manifest = readManifest(archiveOf({{"bundle/manifest.json", R"({
        "bundle.symbolic_name": "bundle", "int": -3, "long": 3000000000, "huge": 18446744073709551615,
        "real": 0.5, "list": [true, [], {"a": 1}]})"}}));
    EXPECT_EQ(any_cast<int>(manifest.headers.at("int")), -3);
    EXPECT_EQ(any_cast<long>(manifest.headers.at("long")), 3000000000);
    EXPECT_EQ(any_cast<double>(manifest.headers.at("huge")), 18446744073709551615.0);
    EXPECT_EQ(any_cast<double>(manifest.headers.at("real")), 0.5);
    const auto list = any_cast<std::vector<Any>>(manifest.headers.at("list"));
    ASSERT_THAT(list, SizeIs(3));
    EXPECT_TRUE(any_cast<bool>(list[0]));
    EXPECT_EQ(any_cast<int>(any_cast<AnyMap>(list[2]).at("A")), 1);
}

struct Mistake {
    std::string manifest;
    std::string error;
};

TEST(Manifest, TellsWhatIsNotUnderstoodAndWhere) {
    const std::string prefix = "its manifest isn't understood: ";
    const Mistake mistakes[] = {
        {"{}", "'bundle.symbolic_name' is missing"},
        {R"({"bundle.symbolic_name": 7})", "bundle.symbolic_name: a text is expected"},
        {R"({"bundle.symbolic_name": ""})", "bundle.symbolic_name: a text is expected"},
        {R"({"bundle.symbolic_name": "a-b"})", "bundle.symbolic_name: it may have letters, digits and '_'"},
        {R"({"bundle.symbolic_name": "other"})",
         "bundle.symbolic_name: it isn't the folder's name, 'bundle'"},
        {R"({"bundle.symbolic_name": "bundle", "bundle.version": 1})", "bundle.version: a text is expected"},
        {R"({"bundle.symbolic_name": "bundle", "bundle.activator": true})",
         "bundle.activator: only false is supported"},
        {R"({"bundle.symbolic_name": "bundle", "bundle.activator": "no"})",
         "bundle.activator: true or false is expected"},
        {withScr("[]"), "scr: an object is expected"},
        {withScr("{}"), "scr: 'version' is missing"},
        {withScr(R"({"version": 2, "components": []})"), "scr.version: only 1 is supported"},
        {withScr(R"({"version": 1})"), "scr: 'components' is missing"},
        {withScr(R"({"version": 1, "components": {}})"), "scr.components: a list is expected"},
        {withScr(R"({"version": 1, "components": [3]})"), "scr.components[0]: an object is expected"},
        {withComponent(""), "scr.components[0]: 'implementation-class' is missing"},
        {withComponent(R"("implementation-class": "A", "enabled": false)"),
         "scr.components[0].enabled: only true is supported"},
        {withComponent(R"("implementation-class": "A", "service": {})"),
         "scr.components[0].service: 'interfaces' is missing"},
        {withComponent(R"("implementation-class": "A", "service": {"interfaces": []})"),
         "scr.components[0].service.interfaces: a service needs an interface"},
        {withComponent(R"("implementation-class": "A", "service": {"interfaces": ["I"], "scope": "bundle"})"),
         "scr.components[0].service.scope: only 'singleton' is supported"},
        {withComponent(R"("implementation-class": "A", "properties": [])"),
         "scr.components[0].properties: an object is expected"},
        {withComponent(R"("implementation-class": "A", "references": [{"name": "r"}])"),
         "scr.components[0].references[0]: 'interface' is missing"},
        {withComponent(R"("implementation-class": "A", "references":
            [{"name": "r", "interface": "I"}, {"name": "s", "interface": "I", "policy": "dynamic"}])"),
         "scr.components[0].references[1].policy: only 'static' is supported"},
        {withComponent(R"("implementation-class": "A", "references":
            [{"name": "r", "interface": "I", "cardinality": "0..n"}])"),
         "scr.components[0].references[0].cardinality: only '1..1' is supported"},
        {withComponent(R"("implementation-class": "A", "inject-references": false, "references":
            [{"name": "r", "interface": "I"}])"),
         "scr.components[0].inject-references: only true is supported"},
        {withComponent(R"("implementation-class": "A", "references":
            [{"name": "r", "interface": "I", "target": "(x=y"}])"),
         "scr.components[0].references[0].target: filter '(x=y': a value ends with ')', at character 5"},
    };
    for (const Mistake& mistake : mistakes)
        EXPECT_EQ(manifestErrorOfText(mistake.manifest), prefix + mistake.error);
}

TEST(Manifest, RefusesNamesThatDifferInCaseOnly) {
    EXPECT_EQ(manifestErrorOfText(R"({"bundle.symbolic_name": "bundle", "scheme": "s3", "Scheme": "s3"})"),
              "its manifest isn't understood: the names 'Scheme' and 'scheme' differ in case only");
    EXPECT_THAT(
        manifestErrorOfText(withComponent(R"("implementation-class": "A", "properties": {"n": 1, "N": 1})")),
        HasSubstr("the names 'N' and 'n' differ in case only"));
}

TEST(Manifest, RefusesWhatIsNoJsonObject) {
    for (const char* text : {"", "{", "{]", "{\"a\": 1,}", "{} {}", "\xff\xfe"})
        EXPECT_THAT(manifestErrorOfText(text), StartsWith("its manifest isn't JSON: ")) << text;
    for (const char* text : {"[]", "3", "null", "\"text\""})
        EXPECT_EQ(manifestErrorOfText(text), "its manifest isn't a JSON object") << text;
}

TEST(Manifest, RefusesValuesThatLieTooDeep) {
    for (const std::size_t depth : {40u, 200'000u}) {
        const std::string list = std::string(depth, '[') + std::string(depth, ']');
        EXPECT_EQ(manifestErrorOfText(R"({"a": )" + list + "}"),
                  "its manifest's values lie too deep in each other");
    }
}

TEST(ResourceArchive, RefusesWhatIsNoArchive) {
    for (const std::string& bytes :
         {std::string("PK"), std::string("not a zip archive at all"), std::string(100'000, '\0')})
        EXPECT_THAT(manifestErrorOf(bytes), StartsWith("its resources aren't a zip archive: "));
}

TEST(ResourceArchive, RefusesAnArchiveCutOffAnywhere) {
    const std::string archive =
        archiveOf({{"bundle/manifest.json", R"({"bundle.symbolic_name": "bundle"})"}});
    ASSERT_EQ(manifestErrorOf(archive), "none");
    for (std::size_t size = 0; size < archive.size(); ++size)
        EXPECT_NE(manifestErrorOf(archive.substr(0, size)), "none") << size;
}

TEST(ResourceArchive, NeedsOneManifest) {
    EXPECT_EQ(manifestErrorOf(""), "its resources have no manifest");
    EXPECT_EQ(manifestErrorOf(archiveOf({{"bundle/", ""}})), "its resources have no manifest");
    EXPECT_EQ(manifestErrorOf(archiveOf(
                  {{"manifest.json", "{}"}, {"/manifest.json", "{}"}, {"a/b/manifest.json", "{}"}})),
              "its resources have no manifest");
    EXPECT_EQ(manifestErrorOf(archiveOf({{"a/manifest.json", "{}"}, {"b/manifest.json", "{}"}})),
              "its resources have more than one manifest");
}

TEST(ResourceArchive, UnpacksNoBomb) {
    const std::string largest(maximumManifestSize, ' ');
    EXPECT_THAT(manifestErrorOf(archiveOf({{"bundle/manifest.json", largest}})),
                StartsWith("its manifest isn't JSON"));
    const std::string archive = archiveOf({{"bundle/manifest.json", largest + " "}});
    EXPECT_LT(archive.size(), 10'000u);
    EXPECT_EQ(manifestErrorOf(archive), "its manifest is larger than 1048576 bytes");
}

TEST(ResourceArchive, IsNotFooledByASizeThatIsNotTrue) {
    const std::string text =
        R"({"bundle.symbolic_name": "bundle"})" + std::string(2 * maximumManifestSize, ' ');
    for (const std::uint32_t lie : {0u, 1u, 30u, 1'000'000u}) {
        const std::string archive = test::withDeclaredSize(archiveOf({{"bundle/manifest.json", text}}), lie);
        EXPECT_EQ(manifestErrorOf(archive), "its manifest is of another size than the archive says") << lie;
    }
}

TEST(ResourceArchive, RefusesLessThanTheArchiveSays) {
    const std::string archive =
        archiveOf({{"bundle/manifest.json", R"({"bundle.symbolic_name": "bundle"})"}});
    EXPECT_THAT(manifestErrorOf(test::withDeclaredSize(archive, 1000)), StartsWith("its manifest is "));
}

TEST(ResourceArchive, RefusesAnEncryptedManifest) {
    const std::string archive =
        archiveOf({{"bundle/manifest.json", R"({"bundle.symbolic_name": "bundle"})"}});
    EXPECT_EQ(manifestErrorOf(test::withMethod(archive, 8)), "none");
    EXPECT_EQ(manifestErrorOf(test::withMethod(archive, 8, 1)),
              "its manifest can't be unpacked: No password provided");
}

TEST(ResourceArchive, UnpacksNothingButStoredAndDeflatedManifests) {
    const std::string archive = archiveOf({{"bundle/manifest.json", "{}"}});
    for (const std::uint32_t method : {1u, 9u, 12u, 14u, 93u, 95u})
        EXPECT_EQ(manifestErrorOf(test::withMethod(archive, method)),
                  "its manifest is neither stored nor deflated")
            << method;
}

TEST(ResourceArchive, ComparesTheChecksum) {
    const std::string archive =
        archiveOf({{"bundle/manifest.json", R"({"bundle.symbolic_name": "bundle"})"}});
    EXPECT_EQ(manifestErrorOf(test::withChecksum(archive, 0x12345678)), "its manifest is damaged: CRC error");
}

}  // namespace
