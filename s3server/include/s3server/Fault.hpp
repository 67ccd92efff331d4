#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "s3server/Headers.hpp"

namespace s3server {

/// What goes wrong. Every fault acts when the request has arrived as a whole.
namespace fault {

/// An S3 error answer; the operation isn't performed.
struct Status {
    int status;
    std::string code;
};
/// An Error document under status 200; the operation isn't performed.
struct ErrorIn200 {
    std::string code;
};
/// Any answer; the operation isn't performed.
struct Reply {
    int status;
    Headers headers;
    std::string body;
};
/// Performed and answered; the connection ends in an orderly way after so many bytes of the body, although
/// the head announced all of them.
struct CutAfter {
    std::uint64_t bytes;
};
/// Performed; the head is answered, then the connection is reset.
struct ResetAfterHeaders {};
/// The connection is reset without an answer; not performed.
struct Reset {};
/// Performed, then the connection is closed without an answer.
struct CloseWithoutReply {};
/// Performed and answered after that time.
struct Delay {
    std::chrono::milliseconds time;
};
/// Performed and answered once Server::releaseStalled() is called.
struct Stall {};

using Action = std::variant<Status, ErrorIn200, Reply, CutAfter, ResetAfterHeaders, Reset, CloseWithoutReply,
                            Delay, Stall>;

}  // namespace fault

/// A planned failure: which requests it is for, how many of them, and what happens. Reads as a sentence:
///
///     server.plan(Fault::status(503, "SlowDown").on("GetObject").skip(1).times(2));
class Fault {
public:
    /// Without a code, the usual one for the status.
    static Fault status(int status, std::string code = "");
    static Fault errorIn200(std::string code);
    /// A content-length among the headers is sent as it is; without one the body's own length is.
    static Fault reply(int status, Headers headers = {}, std::string body = "");
    static Fault cutAfter(std::uint64_t bytes);
    static Fault resetAfterHeaders();
    static Fault reset();
    static Fault closeWithoutReply();
    static Fault delay(std::chrono::milliseconds time);
    static Fault stall();

    /// Reads ACTION[=VALUE][+SKIP][*TIMES][:OPERATION][@BUCKET[/KEY]], for example "503*2:GetObject",
    /// "503=ServiceUnavailable", "cut=1000:GetObject@demo/big.bin", "delay=250+1". The actions are an HTTP
    /// status of 300 to 999 (=CODE), reply (=STATUS,BODY, the body percent-encoded), cut (=BYTES), delay
    /// (=MILLISECONDS), error-in-200 (=CODE), stall, reset, reset-after-headers and close. Throws
    /// std::invalid_argument.
    static Fault parse(std::string_view text);
    /// What parse() makes the same fault of, apart from what it has no words for: the method, and the headers
    /// of a reply.
    std::string text() const;

    /// Only requests of that operation, such as "GetObject".
    Fault& on(std::string operation);
    Fault& inBucket(std::string bucket);
    Fault& forKey(std::string key);
    Fault& withMethod(std::string method);
    /// So many matching requests are let through first.
    Fault& skip(unsigned requests);
    /// How many matching requests it is for, 1 by default.
    Fault& times(unsigned requests);

    bool matches(std::string_view operation, std::string_view method, std::string_view bucket,
                 std::string_view key) const;
    const fault::Action& action() const { return action_; }
    unsigned skipped() const { return skip_; }
    unsigned repetitions() const { return times_; }

private:
    template <class Kind>
    explicit Fault(Kind kind) : action_(std::move(kind)) {}

    fault::Action action_;
    std::optional<std::string> operation_;
    std::optional<std::string> bucket_;
    std::optional<std::string> key_;
    std::optional<std::string> method_;
    unsigned skip_ = 0;
    unsigned times_ = 1;
};

}  // namespace s3server
