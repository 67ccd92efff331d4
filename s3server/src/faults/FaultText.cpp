#include <algorithm>
#include <array>
#include <stdexcept>

#include "operations/Routes.hpp"
#include "s3server/Fault.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::uint64_t largestCount = 1'000'000'000;

std::uint64_t numberOrRefused(std::string_view text, std::string_view what) {
    const auto number = parseNumber(text);
    if (number && *number <= largestCount) return *number;
    throw std::invalid_argument("'" + std::string(text) + "' is no " + std::string(what));
}

Fault withoutValue(std::string_view value, Fault fault) {
    if (!value.empty()) throw std::invalid_argument("'=" + std::string(value) + "' doesn't belong there");
    return fault;
}

/// What stands in an error document has to be text that XML can hold.
std::string errorCode(std::string_view value) {
    const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7f; };
    if (std::none_of(value.begin(), value.end(), isControl)) return std::string(value);
    throw std::invalid_argument("an error code has no control characters");
}

/// STATUS or STATUS,BODY.
Fault anyReply(std::string_view value) {
    const auto [status, body] = splitAtFirst(value, ',');
    const auto number = parseNumber(status);
    if (!number || *number < 200 || *number > 999)
        throw std::invalid_argument("'" + std::string(status) + "' is no status of 200 to 999");
    const auto bytes = percentDecoded(body);
    if (!bytes) throw std::invalid_argument("the body has a % without two hexadecimal digits behind it");
    return Fault::reply(static_cast<int>(*number), {}, *bytes);
}

struct Action {
    std::string_view name;
    Fault (*make)(std::string_view value);
};

constexpr std::array actions{
    Action{"cut", [](std::string_view v) { return Fault::cutAfter(numberOrRefused(v, "number of bytes")); }},
    Action{"delay",
           [](std::string_view v) {
               return Fault::delay(std::chrono::milliseconds(numberOrRefused(v, "number of milliseconds")));
           }},
    Action{"error-in-200",
           [](std::string_view v) { return Fault::errorIn200(v.empty() ? "InternalError" : errorCode(v)); }},
    Action{"reply", anyReply},
    Action{"stall", [](std::string_view v) { return withoutValue(v, Fault::stall()); }},
    Action{"reset", [](std::string_view v) { return withoutValue(v, Fault::reset()); }},
    Action{"reset-after-headers",
           [](std::string_view v) { return withoutValue(v, Fault::resetAfterHeaders()); }},
    Action{"close", [](std::string_view v) { return withoutValue(v, Fault::closeWithoutReply()); }},
};

Fault parseAction(std::string_view text) {
    const auto [name, value] = splitAtFirst(text, '=');
    if (const auto status = parseNumber(name)) {
        if (*status >= 300 && *status <= 999)
            return Fault::status(static_cast<int>(*status), errorCode(value));
    }
    const auto* const action = std::find_if(actions.begin(), actions.end(),
                                            [n = name](const Action& each) { return each.name == n; });
    if (action != actions.end()) return action->make(value);
    throw std::invalid_argument("'" + std::string(name) + "' is no kind of fault");
}

unsigned requestCount(std::string_view text) {
    return static_cast<unsigned>(numberOrRefused(text, "number of requests"));
}

std::string operationName(std::string_view text) {
    if (isOperation(text)) return std::string(text);
    throw std::invalid_argument("'" + std::string(text) + "' is no operation of this server");
}

/// Takes the separator and what follows it from the text; nothing if there is no separator.
std::optional<std::string_view> cutTail(std::string_view& text, char separator) {
    const auto at = text.find(separator);
    if (at == std::string_view::npos) return std::nullopt;
    const auto tail = text.substr(at + 1);
    text = text.substr(0, at);
    return tail;
}

/// One overload for each kind of fault, the inverse of parseAction().
struct ActionText {
    std::string operator()(const fault::Status& what) const {
        return withValue(std::to_string(what.status), what.code);
    }
    std::string operator()(const fault::ErrorIn200& what) const {
        return withValue("error-in-200", what.code);
    }
    std::string operator()(const fault::Reply& what) const {
        const std::string body = what.body.empty() ? "" : ',' + percentEncoded(what.body);
        return "reply=" + std::to_string(what.status) + body;
    }
    std::string operator()(const fault::CutAfter& what) const { return "cut=" + std::to_string(what.bytes); }
    std::string operator()(const fault::ResetAfterHeaders&) const { return "reset-after-headers"; }
    std::string operator()(const fault::Reset&) const { return "reset"; }
    std::string operator()(const fault::CloseWithoutReply&) const { return "close"; }
    std::string operator()(const fault::Delay& what) const {
        return "delay=" + std::to_string(what.time.count());
    }
    std::string operator()(const fault::Stall&) const { return "stall"; }

    static std::string withValue(std::string name, const std::string& value) {
        return value.empty() ? name : std::move(name) + '=' + value;
    }
};

}  // namespace

Fault Fault::parse(std::string_view text) {
    const auto place = cutTail(text, '@');
    const auto operation = cutTail(text, ':');
    const auto times = cutTail(text, '*');
    const auto skip = cutTail(text, '+');

    Fault fault = parseAction(text);
    if (skip) fault.skip(requestCount(*skip));
    if (times) fault.times(requestCount(*times));
    if (operation) fault.on(operationName(*operation));
    if (place) {
        const auto [bucket, key] = splitAtFirst(*place, '/');
        if (bucket.empty()) throw std::invalid_argument("the name of the bucket is missing");
        fault.inBucket(std::string(bucket));
        if (!key.empty()) fault.forKey(std::string(key));
    }
    return fault;
}

std::string Fault::text() const {
    std::string text = std::visit(ActionText(), action_);
    if (skip_ != 0) text += '+' + std::to_string(skip_);
    if (times_ != 1) text += '*' + std::to_string(times_);
    if (operation_) text += ':' + *operation_;
    if (bucket_) text += '@' + *bucket_;
    if (key_) text += '/' + *key_;
    return text;
}

}  // namespace s3server
