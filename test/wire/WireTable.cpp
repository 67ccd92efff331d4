#include "wire/WireTable.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>

#include <algorithm>
#include <boost/core/demangle.hpp>
#include <cctype>
#include <map>
#include <sstream>
#include <typeinfo>

#include "support/plugin/CloudFailure.hpp"
#include "support/plugin/LogCapture.hpp"
#include "support/servers/ScriptedServer.hpp"

namespace testsupport {

namespace {

constexpr unsigned levelsBesideTheTrace = 2 | 4 | 16 | 512;

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string outcomeOf(const WireCase& conversation, storage::s3provider::S3CloudClient& client) {
    try {
        return conversation.call(client);
    } catch (const storage::cloudprovider::CloudException& failure) {
        const auto type = boost::core::demangle(typeid(failure).name());
        return type.substr(type.rfind(':') + 1) + "(" + inAscii(identifierOf(failure)) + ")";
    }
}

// The request as the table writes it: only those headers that `expected` asks for.
std::string asWritten(const SeenRequest& request, const std::string& expected) {
    std::string text = request.method + " " + request.target;
    std::istringstream lines(expected);
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        const auto name = line.substr(0, line.find(':'));
        text += "\n" + name + ": " + request.header(name);
    }
    return text;
}

void expectRequests(const WireCase& conversation, const ScriptedServer& server) {
    EXPECT_EQ(server.unusedScripts(), 0u) << "lines of the conversation were never reached";
    EXPECT_EQ(server.unexpectedRequests(), 0u);
    const auto requests = server.requests();
    for (std::size_t i = 0; i < std::min(requests.size(), conversation.lines.size()); ++i) {
        const auto& line = conversation.lines[i];
        EXPECT_EQ(asWritten(requests[i], line.request), line.request);
        EXPECT_EQ(requests[i].body, line.requestBody);
    }
}

std::vector<std::string> asWritten(const std::vector<LoggedRecord>& records) {
    std::vector<std::string> texts;
    for (const auto& record : records)
        texts.push_back(std::to_string(record.level) + " " + record.text);
    return texts;
}

}  // namespace

void PrintTo(const WireCase& conversation, std::ostream* out) {
    *out << conversation.name;
}

void expectConversation(const WireCase& conversation) {
    std::vector<Script> scripts;
    for (const auto& line : conversation.lines)
        scripts.push_back({Step::send(line.reply)});
    ScriptedServer server(scripts);
    storage::s3provider::S3CloudClient client("b", plainClient(server.endpoint()), conversation.settings,
                                              conversation.region);
    LogCapture log({clientChannel}, levelsBesideTheTrace);
    EXPECT_EQ(outcomeOf(conversation, client), conversation.outcome);
    EXPECT_EQ(asWritten(log.records()), conversation.log);
    expectRequests(conversation, server);
}

Aws::Client::ClientConfiguration plainConfiguration(const std::string& endpoint) {
    Aws::Client::ClientConfiguration base;
    base.region = "eu-west-3";
    base.endpointOverride = endpoint;
    base.scheme = Aws::Http::Scheme::HTTP;
    base.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0);
    return base;
}

std::shared_ptr<Aws::S3::S3Client> sdkClient(const Aws::Client::ClientConfiguration& base) {
    const Aws::S3::S3ClientConfiguration configuration(
        base, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
        Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    return std::make_shared<Aws::S3::S3Client>(
        std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("AKIDEXAMPLE", "SECRETEXAMPLE"),
        std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), configuration);
}

std::shared_ptr<Aws::S3::S3Client> plainClient(const std::string& endpoint) {
    return sdkClient(plainConfiguration(endpoint));
}

std::string failureRecord(int status, const std::string& requestId, const std::string& name,
                          const std::string& message, const HeaderList& headers) {
    std::map<std::string, std::string> sorted;
    for (const auto& [header, value] : headers)
        sorted.emplace(lowerCase(header), value);
    std::string text = "512 Cloud operation failed: HTTP response code: " + std::to_string(status) +
                       "\nResolved remote host IP address: 127.0.0.1\nRequest ID: " + requestId +
                       "\nException name: " + name + "\nError message: " + message + "\n" +
                       std::to_string(sorted.size()) + " response headers:";
    for (const auto& [header, value] : sorted)
        text += "\n" + header + " : " + value;
    return text;
}

std::string errorBody(const std::string& code, const std::string& message) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Error><Code>" + code + "</Code><Message>" + message +
           "</Message><RequestId>REQ1</RequestId></Error>";
}

ErrorReply errorReply(int status, const std::string& code, const std::string& message) {
    const auto body = errorBody(code, message);
    const HeaderList headers = {{"Content-Type", "application/xml"},
                                {"Content-Length", std::to_string(body.size())}};
    return {httpReply(status, headers, body), failureRecord(status, "REQ1", code, message, headers)};
}

std::string locationReply(const std::string& region) {
    return httpReply(200, {{"Content-Type", "application/xml"}},
                     "<LocationConstraint xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\">" + region +
                         "</LocationConstraint>");
}

}  // namespace testsupport
