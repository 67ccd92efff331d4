#pragma once

#include <curl/curl.h>

#include <regex>
#include <string>

namespace testsupport {

/// How the AWS SDK reports that a transfer failed, in the words of the libcurl that is linked: they differ
/// from version to version.
inline std::string curlFailure(CURLcode code) {
    return "curlCode: " + std::to_string(code) + ", " + curl_easy_strerror(code);
}

/// The same text, plain or as JSON, with each such report in the words of the libcurl that is linked.
inline std::string inWordsOfCurl(const std::string& text) {
    static const std::regex report(R"(curlCode: (\d+), [^"\\\n]*)");
    std::string reworded;
    auto rest = text.cbegin();
    for (std::sregex_iterator found(text.begin(), text.end(), report), end; found != end; ++found) {
        reworded.append(rest, (*found)[0].first);
        reworded += curlFailure(static_cast<CURLcode>(std::stoi((*found)[1])));
        rest = (*found)[0].second;
    }
    return reworded.append(rest, text.cend());
}

}  // namespace testsupport
