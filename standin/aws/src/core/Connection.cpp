#include "core/Connection.hpp"

#include <algorithm>
#include <limits>
#include <new>
#include <string_view>

#include "core/ConnectionOptions.hpp"
#include "core/Text.hpp"

namespace standin::aws {
namespace {

using Aws::Http::HttpMethod;

/// More than this is not set aside on a server's word alone; a longer body grows as it comes.
constexpr curl_off_t largestReservation = 64L * 1024 * 1024;

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
    bool headEnded = false;   ///< the empty line behind the last answer's headers has come
    bool overflowed = false;  ///< the body grew beyond what it may
};

void addHeader(Headers& headers, std::string_view line) {
    const auto colon = line.find(':');
    const bool continuesAnother = !line.empty() && (line.front() == ' ' || line.front() == '\t');
    if (colon == std::string_view::npos || continuesAnother) return;
    headers.emplace(lowerCase(trimmed(line.substr(0, colon))), trimmed(line.substr(colon + 1)));
}

/// The first answer to a request, or a further one (after 100, 417, a proxy's): the last one's body counts.
void beginAnswer(Receiver& receiver) {
    receiver.answer.body.clear();
    receiver.headEnded = false;
}

/// libcurl takes a connection that closes between two header lines for the answer's end. A head without its
/// last line is not all of it: how long the body is, or what it is, may have been in the rest.
CURLcode resultOf(CURLcode code, const Receiver& receiver) {
    if (receiver.overflowed) return CURLE_FILESIZE_EXCEEDED;
    return code == CURLE_OK && !receiver.headEnded ? CURLE_PARTIAL_FILE : code;
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

int statusOf(CURL* handle) {
    long status = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

std::size_t longestBody(const Receiver& receiver) {
    const int status = statusOf(receiver.handle);
    const bool isContent = receiver.request.answersContent && status >= 200 && status < 300;
    return isContent ? std::numeric_limits<std::size_t>::max() : receiver.request.longestAnswer;
}

void reserveForAnnounced(const Receiver& receiver) {
    curl_off_t announced = -1;
    curl_easy_getinfo(receiver.handle, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
    if (announced > 0)
        receiver.answer.body.reserve(std::min(
            longestBody(receiver), static_cast<std::size_t>(std::min(announced, largestReservation))));
}

std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* target) {
    auto& receiver = *static_cast<Receiver*>(target);
    try {
        receiver.overflowed = size * count > longestBody(receiver) - receiver.answer.body.size();
        if (receiver.overflowed) return 0;
        if (receiver.answer.body.empty()) reserveForAnnounced(receiver);
        receiver.answer.body.append(bytes, size * count);
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
    answer.remoteAddress = textInfo(handle, CURLINFO_PRIMARY_IP);
    answer.redirectUrl = textInfo(handle, CURLINFO_REDIRECT_URL);
    setOption(handle, CURLOPT_HTTPHEADER, nullptr);
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
