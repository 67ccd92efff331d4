#include "conformance/CloudClientConformance.hpp"

#include <algorithm>
#include <sstream>

using namespace storage::cloudprovider;

void CloudClientConformance::put(const std::string& key, const std::string& content) {
    std::istringstream in(content);
    client->upload(key, in, content.size());
}

std::string CloudClientConformance::get(const std::string& key, std::uint64_t start, std::uint64_t end) {
    std::ostringstream out;
    client->download(key, out, start, end);
    return out.str();
}

void CloudClientConformance::expectContent(const std::string& key, const std::string& content) {
    const auto stored = get(key);
    const auto differing =
        std::mismatch(stored.begin(), stored.end(), content.begin(), content.end()).first - stored.begin();
    EXPECT_TRUE(stored == content) << key << ": " << stored.size() << " bytes instead of " << content.size()
                                   << ", the same up to byte " << differing;
}

std::vector<std::string> CloudClientConformance::names(const std::string& prefix,
                                                       const ListOptions& options) {
    std::vector<std::string> all;
    std::string token;
    do {
        for (const auto& entry : client->list(prefix, token, options))
            all.push_back(entry.name);
    } while (!token.empty());
    return all;
}

PartInfo CloudClientConformance::part(const std::string& key, const std::string& id, std::uint64_t index,
                                      const std::string& content) {
    std::istringstream in(content);
    PartInfo info{index, index * partSize, content.size(), ""};
    info.Tag = client->uploadPart(key, id, info, in);
    return info;
}
