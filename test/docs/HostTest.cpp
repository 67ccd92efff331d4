#include <gmock/gmock.h>

#include <algorithm>
#include <map>

#include "docs/Sources.hpp"

using docs::Names;
using ::testing::ContainerEq;
using ::testing::IsSubsetOf;

namespace {

namespace fs = std::filesystem;

/// What the plug-in calls so is its own or the standard library's; the host's of that name it doesn't use.
const Names ofOthers = {
    "context",  // a bundle's; not CloudException's
    "iri",      // a parameter; not Exception's
    "kind",     // of a Failure; not of an Entry
    "name",     // a parameter; not of an entry
    "read",     // a variable; not IReader's
    "text",     // a variable; not ExceptionContext's
    "what",     // std::exception's
};

const fs::path headers = docs::sources / "include" / "host";
const fs::path plugIn = docs::sources / "src" / "storage" / "s3provider" / "src";

/// Without comments, texts, directives and names of the standard library.
std::string codeOf(const fs::path& file) {
    std::string code = docs::read(file);
    for (const char* const pattern :
         {R"(//[^\n]*)", R"("(?:\\.|[^"\\\n])*")", R"(#[^\n]*)", R"(\b(?:std|boost)(?:::\w+)+)"})
        code = std::regex_replace(code, std::regex(pattern), " 0 ");
    return code;
}

Names wordsOf(const std::string& text) {
    return docs::namesIn(text, std::regex(R"(\b([A-Za-z_]\w*))"));
}

Names wordsOf(const Names& names) {
    Names words;
    for (const std::string& name : names)
        words.merge(wordsOf(name));
    return words;
}

/// The namespaces, types, functions, members and enumerators of a header.
Names declaredIn(const fs::path& header) {
    const std::string code = codeOf(header);
    Names names = wordsOf(docs::namesIn(code, std::regex(R"(\bnamespace\s+([\w:]+))")));
    for (const char* const pattern : {R"(\b(?:class|struct|using)\s+(\w+)\s*[:{=])", R"([\w>&*]\s+(\w+)\()",
                                      R"([\w>&*]\s+(\w+)\s*(?:=[^;(){}]*)?;)", R"((\w+)\s*=\s*\d+,)"})
        names.merge(docs::namesIn(code, std::regex(pattern)));
    return names;
}

/// The host's headers that a file includes, and those that they include.
void addHostHeaders(const fs::path& file, Names& found) {
    for (const std::string& name :
         docs::namesIn(docs::read(file), std::regex(R"(#include [<"]([^>"]+)[>"])")))
        if (fs::exists(headers / name) && found.insert(name).second) addHostHeaders(headers / name, found);
}

template <class Action>
void forEachSource(Action action) {
    for (const auto& entry : fs::directory_iterator(plugIn))
        if (entry.path().extension() == ".cpp" || entry.path().extension() == ".hpp") action(entry.path());
}

Names usedByThePlugIn() {
    Names words;
    forEachSource([&](const fs::path& file) { words.merge(wordsOf(codeOf(file))); });
    return words;
}

Names headersOfThePlugIn() {
    Names found;
    forEachSource([&](const fs::path& file) { addHostHeaders(file, found); });
    return found;
}

Names intersection(const Names& a, const Names& b) {
    Names both;
    std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::inserter(both, both.end()));
    return both;
}

/// By header, the words of the names in the first cells of the table under its title.
std::map<std::string, Names> documented() {
    std::ifstream in(docs::sources / "docs" / "host.md");
    std::map<std::string, Names> names;
    std::string header;
    const std::regex quoted("`([^`]+)`");
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("## ", 0) == 0) header = line.find('`') == std::string::npos ? "" : line.substr(4);
        if (!header.empty() && header.back() == '`') header.pop_back();
        if (line.rfind("| `", 0) == 0)
            names[header].merge(wordsOf(docs::namesIn(line.substr(0, line.find('|', 1)), quoted)));
    }
    return names;
}

/// Of the host's names in the headers that the plug-in includes, those that its sources have.
Names needed() {
    Names declared;
    for (const std::string& header : headersOfThePlugIn())
        declared.merge(declaredIn(headers / header));
    return intersection(declared, usedByThePlugIn());
}

TEST(HostPage, NamesWhatThePlugInUsesAndNothingElse) {
    Names names;
    for (const auto& [header, words] : documented())
        names.insert(words.begin(), words.end());
    names.insert(ofOthers.begin(), ofOthers.end());
    EXPECT_THAT(names, ContainerEq(needed()));
}

TEST(HostPage, NamesEachUnderTheHeaderThatDeclaresIt) {
    for (const auto& [header, words] : documented()) {
        ASSERT_TRUE(fs::exists(headers / header)) << header;
        EXPECT_THAT(words, IsSubsetOf(declaredIn(headers / header))) << header;
    }
}

TEST(HostPage, NamesNothingThatIsOfOthers) {
    for (const auto& [header, words] : documented())
        EXPECT_THAT(intersection(words, ofOthers), ContainerEq(Names{})) << header;
}

}  // namespace
