#include "messages/S3Answer.hpp"

#include "messages/Text.hpp"

namespace s3vfs {

namespace {

// The record is a list of "Label: value" lines; only the message may span several.
std::string valueBetween(const std::string& record, const std::string& label, const std::string& next) {
    const auto start = record.find(label);
    if (start == std::string::npos) return {};
    const auto value = start + label.size();
    const auto end = record.find(next, value);
    return end == std::string::npos ? record.substr(value) : record.substr(value, end - value);
}

// The message ends where the line "N response headers:" begins.
std::string messageOf(const std::string& record) {
    auto message = valueBetween(record, "\nError message: ", " response headers:");
    const auto countLine = message.rfind('\n');
    return countLine == std::string::npos ? message : message.substr(0, countLine);
}

}  // namespace

std::string describeS3Answer(const std::string& failureRecord) {
    const auto status = valueBetween(failureRecord, "HTTP response code: ", "\n");
    if (status.empty()) return {};
    const auto code = valueBetween(failureRecord, "\nException name: ", "\n");
    const auto message = messageOf(failureRecord);
    const auto origin = status == "-1" ? std::string("no usable answer from S3") : "S3 answered " + status;
    return printable(origin + (code.empty() ? "" : " " + code) + ": " + message);
}

}  // namespace s3vfs
