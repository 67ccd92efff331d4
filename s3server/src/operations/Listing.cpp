#include "operations/Listing.hpp"

#include <optional>

#include "operations/S3Error.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

Objects::const_iterator behindPrefix(const Objects& objects, std::string prefix) {
    while (!prefix.empty() && prefix.back() == '\xff')
        prefix.pop_back();
    if (prefix.empty()) return objects.end();
    prefix.back() = static_cast<char>(static_cast<unsigned char>(prefix.back()) + 1);
    return objects.lower_bound(prefix);
}

Objects::const_iterator firstOf(const Objects& objects, const ListingQuery& query) {
    if (query.after.text < query.prefix) return objects.lower_bound(query.prefix);
    if (query.after.wholePrefix) return behindPrefix(objects, query.after.text);
    return query.after.text.empty() ? objects.begin() : objects.upper_bound(query.after.text);
}

std::optional<std::string> commonPrefix(const std::string& key, const ListingQuery& query) {
    if (query.delimiter.empty()) return std::nullopt;
    const auto at = key.find(query.delimiter, query.prefix.size());
    if (at == std::string::npos) return std::nullopt;
    return key.substr(0, at + query.delimiter.size());
}

}  // namespace

std::string continuationToken(const Position& position) {
    return base64((position.wholePrefix ? "p" : "k") + position.text);
}

Position parseContinuationToken(const std::string& token) {
    const auto text = fromBase64(token);
    if (!text || text->size() < 2 || (text->front() != 'p' && text->front() != 'k')) {
        throw S3Error("InvalidArgument")
            .saying("The continuation token provided is incorrect")
            .with("ArgumentName", "continuation-token");
    }
    return {text->substr(1), text->front() == 'p'};
}

ListingPage listPage(const Objects& objects, const ListingQuery& query) {
    ListingPage page;
    if (query.maxKeys == 0) return page;
    auto at = firstOf(objects, query);
    while (at != objects.end() && startsWith(at->first, query.prefix)) {
        if (page.size() == query.maxKeys) {
            page.truncated = true;
            break;
        }
        if (auto rolled = commonPrefix(at->first, query)) {
            at = behindPrefix(objects, *rolled);
            page.next = {*rolled, true};
            page.commonPrefixes.push_back(std::move(*rolled));
        } else {
            page.next = {at->first, false};
            page.contents.emplace_back(*at);
            ++at;
        }
    }
    return page;
}

}  // namespace s3server
