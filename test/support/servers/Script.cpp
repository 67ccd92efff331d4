#include "support/servers/Script.hpp"

#include <algorithm>
#include <array>

#include <strings.h>

namespace testsupport {
namespace {

bool sameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

HeaderList::const_iterator find(const HeaderList& headers, std::string_view name) {
    return std::find_if(headers.begin(), headers.end(),
                        [name](const auto& header) { return sameName(header.first, name); });
}

constexpr std::array<std::pair<int, std::string_view>, 20> reasonPhrases{{
    {100, "Continue"},
    {200, "OK"},
    {204, "No Content"},
    {206, "Partial Content"},
    {301, "Moved Permanently"},
    {304, "Not Modified"},
    {307, "Temporary Redirect"},
    {400, "Bad Request"},
    {401, "Unauthorized"},
    {403, "Forbidden"},
    {404, "Not Found"},
    {405, "Method Not Allowed"},
    {407, "Proxy Authentication Required"},
    {409, "Conflict"},
    {412, "Precondition Failed"},
    {416, "Range Not Satisfiable"},
    {500, "Internal Server Error"},
    {502, "Bad Gateway"},
    {503, "Service Unavailable"},
    {504, "Gateway Timeout"},
}};

std::string_view reasonPhrase(int status) {
    for (const auto& [code, phrase] : reasonPhrases)
        if (code == status) return phrase;
    return "Status";
}

}  // namespace

std::string SeenRequest::header(std::string_view name) const {
    const auto found = find(headers, name);
    return found == headers.end() ? std::string{} : found->second;
}

bool SeenRequest::hasHeader(std::string_view name) const {
    return find(headers, name) != headers.end();
}

std::string httpReply(int status, const HeaderList& headers, std::string_view body) {
    std::string reply = "HTTP/1.1 " + std::to_string(status) + " ";
    reply.append(reasonPhrase(status)).append("\r\n");
    for (const auto& [name, value] : headers)
        reply.append(name).append(": ").append(value).append("\r\n");
    if (find(headers, "Content-Length") == headers.end())
        reply.append("Content-Length: ").append(std::to_string(body.size())).append("\r\n");
    return reply.append("\r\n").append(body);
}

}  // namespace testsupport
