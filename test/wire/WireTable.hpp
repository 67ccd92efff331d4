#pragma once

#include <aws/core/client/ClientConfiguration.h>
#include <gtest/gtest.h>

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "S3CloudClient.hpp"
#include "support/servers/Script.hpp"

namespace testsupport {

/// One request that must come, and the reply it gets.
struct Line {
    std::string request;           ///< "METHOD TARGET", then for each header to be checked "\nname: value"
    std::string reply;             ///< bytes as sent
    std::string requestBody = "";  ///< must be exactly this
};

/// One call of a cloud client of bucket "b", region eu-west-3, told from the wire: what the server hears and
/// says, what the caller gets, and what the log holds.
struct WireCase {
    std::string name;                                                      ///< of the test; letters only
    std::function<std::string(storage::s3provider::S3CloudClient&)> call;  ///< returns the result as text
    std::vector<Line> lines;                                               ///< all of them, in order
    std::string outcome;           ///< the call's text, or the exception as "Class(identifier)"
    std::vector<std::string> log;  ///< "LEVEL text" of all records but those of the trace
    storage::s3provider::S3ClientConfiguration settings = {2, 0};
    std::string region = "eu-west-3";
};

void PrintTo(const WireCase& conversation, std::ostream* out);

/// Plays the conversation and expects it to go exactly as written.
void expectConversation(const WireCase& conversation);

/// For a server at `endpoint` ("host:port"): HTTP, region eu-west-3, no retries.
Aws::Client::ClientConfiguration plainConfiguration(const std::string& endpoint);

/// An SDK client that signs with "AKIDEXAMPLE".
std::shared_ptr<Aws::S3::S3Client> sdkClient(const Aws::Client::ClientConfiguration& configuration);

/// An SDK client for a server at `endpoint` ("host:port") over HTTP that never retries by itself.
std::shared_ptr<Aws::S3::S3Client> plainClient(const std::string& endpoint);

/// What the SDK prints of an error that came with these headers, as the log shows it.
std::string failureRecord(int status, const std::string& requestId, const std::string& name,
                          const std::string& message, const HeaderList& headers);

/// An S3 error document.
std::string errorBody(const std::string& code, const std::string& message);

/// A reply with an S3 error document, and the record that the log then holds: the same facts twice.
struct ErrorReply {
    std::string reply;
    std::string record;
};
ErrorReply errorReply(int status, const std::string& code, const std::string& message);

/// A bucket's location, and the answer that names it.
std::string locationReply(const std::string& region);

}  // namespace testsupport
