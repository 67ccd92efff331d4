#include "core/Connection.hpp"

#include <algorithm>
#include <new>
#include <string_view>

#include "core/ConnectionOptions.hpp"
#include "core/RequestChecks.hpp"
#include "core/Text.hpp"

namespace standin::aws {
namespace {

using Aws::Http::HttpMethod;

/// In bytes. More is not set aside on a server's word alone, a longer body grows as it comes; and more is not
/// taken in without its word.
constexpr curl_off_t largestUnaskedFor = 64L * 1024 * 1024;

/// libcurl then finds the body's end by reading it, so that an upload answered by an error counts as
/// unfinished and its connection, on which the server may have left bytes unread, is not used again. The
/// server learns the size from our own content-length.
constexpr curl_off_t sizeLeftOpen = -1;

struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, FreeList>;

void append(HeaderList& list, const std::string& line) {
    curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
    if (longer == nullptr) throw std::bad_alloc();
    (void)list.release();
    list.reset(longer);
}

/// In libcurl's notation "name;" is sent without value, and "name:" keeps libcurl from adding that header.
HeaderList headerList(const Headers& headers, bool disableExpectHeader) {
    HeaderList list;
    for (const auto& [name, value] : headers) {
        std::string line = name;
        append(list, value.empty() ? line.append(";") : line.append(": ").append(value));
    }
    append(list, "Transfer-Encoding:");
    if (disableExpectHeader) append(list, "Expect:");
    return list;
}

/// Where a transfer's callbacks put what comes.
struct Receiver {
    CURL* handle;
    const WireRequest& request;
    WireAnswer& answer;
    bool headEnded = false;       ///< the empty line behind the last answer's headers has come
    std::uint64_t bodyLimit = 0;  ///< in bytes; known once the body begins
    bool overflowed = false;      ///< the body is longer, or announced to be
};

void addHeader(Headers& headers, std::string_view line) {
    const auto colon = line.find(':');
    const bool continuesAnother = !line.empty() && (line.front() == ' ' || line.front() == '\t');
    if (colon == std::string_view::npos || continuesAnother) return;
    const std::string_view value = line.substr(colon + 1);
    headers.emplace(lowerCase(trimmed(line.substr(0, colon))), trimmed(value.substr(0, value.find('\xff'))));
}

/// The first answer to a request, or a further one (after 100, 417, a proxy's): the last one's body counts.
void beginAnswer(Receiver& receiver) {
    receiver.answer.body.clear();
    receiver.headEnded = false;
}

int statusOf(CURL* handle) {
    long status = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

/// libcurl takes a connection that closes between two header lines for the answer's end. A head without its
/// last line is not all of it: how long the body is, or what it is, may have been in the rest. A status that
/// is an error stays one whatever was in it.
CURLcode resultOf(CURLcode code, const Receiver& receiver) {
    if (receiver.overflowed) return CURLE_FILESIZE_EXCEEDED;
    const bool cut = code == CURLE_OK && !receiver.headEnded && statusOf(receiver.handle) < 400;
    return cut ? CURLE_PARTIAL_FILE : code;
}

// The callbacks run inside libcurl, which no exception may cross.

std::size_t onHeader(char* bytes, std::size_t size, std::size_t count, void* target) {
    const std::string_view line(bytes, size * count);
    auto& receiver = *static_cast<Receiver*>(target);
    try {
        if (line.substr(0, 5) == "HTTP/") beginAnswer(receiver);
        if (line == "\r\n" || line == "\n") receiver.headEnded = true;
        addHeader(receiver.answer.headers, line);
        return line.size();
    } catch (const std::exception&) {
        return 0;
    }
}

/// `announced` is negative when nothing was.
std::uint64_t longestBody(const Receiver& receiver, curl_off_t announced) {
    const WireRequest& request = receiver.request;
    const int status = statusOf(receiver.handle);
    const bool isContent = request.answersContent && status >= 200 && status < 300;
    if (!isContent) return request.longestAnswer;
    if (const auto wanted = rangeLength(request.headers)) return *wanted;
    return static_cast<std::uint64_t>(announced < 0 ? largestUnaskedFor : announced);
}

void beginBody(Receiver& receiver) {
    curl_off_t announced = -1;
    curl_easy_getinfo(receiver.handle, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
    receiver.bodyLimit = longestBody(receiver, announced);
    if (announced <= 0) return;
    receiver.overflowed = static_cast<std::uint64_t>(announced) > receiver.bodyLimit;
    if (!receiver.overflowed)
        receiver.answer.body.reserve(static_cast<std::size_t>(std::min(announced, largestUnaskedFor)));
}

std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* target) {
    auto& receiver = *static_cast<Receiver*>(target);
    std::string& body = receiver.answer.body;
    try {
        if (body.empty()) beginBody(receiver);
        receiver.overflowed = receiver.overflowed || size * count > receiver.bodyLimit - body.size();
        if (receiver.overflowed) return 0;
        body.append(bytes, size * count);
        return size * count;
    } catch (const std::exception&) {
        return 0;
    }
}

std::size_t onSend(char* buffer, std::size_t size, std::size_t count, void* source) {
    try {
        return static_cast<RequestBody*>(source)->read(buffer, size * count);
    } catch (const std::exception&) {
        return CURL_READFUNC_ABORT;
    }
}

int onRewind(void* source, curl_off_t offset, int origin) {
    if (offset != 0 || origin != SEEK_SET) return CURL_SEEKFUNC_CANTSEEK;
    try {
        return static_cast<RequestBody*>(source)->rewind() ? CURL_SEEKFUNC_OK : CURL_SEEKFUNC_FAIL;
    } catch (const std::exception&) {
        return CURL_SEEKFUNC_FAIL;
    }
}

std::string textInfo(CURL* handle, CURLINFO what) {
    char* text = nullptr;
    curl_easy_getinfo(handle, what, &text);
    return text != nullptr ? text : "";
}

}  // namespace

Connection::Connection(const Aws::Client::ClientConfiguration& configuration)
    : handle_(curl_easy_init()), disableExpectHeader_(configuration.disableExpectHeader) {
    if (!handle_) throw std::bad_alloc();
    setFixedOptions(handle_.get(), configuration);
    setOption(handle_.get(), CURLOPT_HEADERFUNCTION, &onHeader);
    setOption(handle_.get(), CURLOPT_WRITEFUNCTION, &onBody);
    setOption(handle_.get(), CURLOPT_READFUNCTION, &onSend);
    setOption(handle_.get(), CURLOPT_SEEKFUNCTION, &onRewind);
}

void Connection::perform(const WireRequest& request, WireAnswer& answer) {
    CURL* const handle = handle_.get();
    const HeaderList headers = headerList(request.headers, disableExpectHeader_);
    Receiver receiver{handle, request, answer};
    answer.body.clear();
    setMethod(request);
    setOption(handle, CURLOPT_URL, request.url.c_str());
    setOption(handle, CURLOPT_HTTPHEADER, headers.get());
    setOption(handle, CURLOPT_HEADERDATA, &receiver);
    setOption(handle, CURLOPT_WRITEDATA, &receiver);

    answer.code = resultOf(curl_easy_perform(handle), receiver);
    answer.status = statusOf(handle);
    if (std::string address = textInfo(handle, CURLINFO_PRIMARY_IP); !address.empty())
        answer.remoteAddress = std::move(address);
    answer.redirectUrl = textInfo(handle, CURLINFO_REDIRECT_URL);
    setOption(handle, CURLOPT_HTTPHEADER, nullptr);
    if (answer.code != CURLE_OK) forgetConnections();
}

/// A handle's duplicate has its options, and not its connections. Without memory for one, the handle stays.
void Connection::forgetConnections() {
    if (CURL* const duplicate = curl_easy_duphandle(handle_.get())) handle_.reset(duplicate);
}

/// Starts from GET each time: libcurl remembers what the request before was.
void Connection::setMethod(const WireRequest& request) {
    CURL* const handle = handle_.get();
    setOption(handle, CURLOPT_HTTPGET, 1L);
    setOption(handle, CURLOPT_CUSTOMREQUEST, nullptr);
    if (request.method == HttpMethod::HTTP_HEAD) {
        setOption(handle, CURLOPT_NOBODY, 1L);
    } else if (request.body != nullptr) {
        request.body->rewind();
        setOption(handle, CURLOPT_UPLOAD, 1L);
        setOption(handle, CURLOPT_INFILESIZE_LARGE, request.body->size() == 0 ? curl_off_t{0} : sizeLeftOpen);
        setOption(handle, CURLOPT_READDATA, request.body);
        setOption(handle, CURLOPT_SEEKDATA, request.body);
    }
    const bool known = request.method == HttpMethod::HTTP_GET || request.method == HttpMethod::HTTP_HEAD;
    if (!known)
        setOption(handle, CURLOPT_CUSTOMREQUEST,
                  Aws::Http::HttpMethodMapper::GetNameForHttpMethod(request.method));
}

}  // namespace standin::aws
