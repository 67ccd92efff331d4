#include <boost/date_time/posix_time/posix_time.hpp>
#include <sstream>

#include "wire/WireTable.hpp"

using namespace testsupport;
using storage::s3provider::S3CloudClient;

namespace {

// ---- calls, each giving its result as text

std::string describe(const storage::cloudprovider::EntryInfo& entry) {
    return entry.name + " " + std::to_string(entry.size) + " " +
           boost::posix_time::to_iso_extended_string(entry.lastModified);
}

auto stat(std::string key) {
    return [=](S3CloudClient& client) {
        const auto entry = client.stat(key);
        return entry ? describe(*entry) : "nothing";
    };
}

auto checkRootValidity() {
    return [](S3CloudClient& client) -> std::string {
        client.checkRootValidity("/");
        return "valid";
    };
}

auto list(std::string prefix, std::string token, storage::cloudprovider::ListOptions options) {
    return [=](S3CloudClient& client) {
        auto nextToken = token;
        std::string text;
        for (const auto& entry : client.list(prefix, nextToken, options)) {
            text += entry.size == 0 ? entry.name + "\n" : describe(entry) + "\n";
        }
        return text + "next: " + nextToken;
    };
}

auto remove(std::string key) {
    return [=](S3CloudClient& client) -> std::string {
        client.remove(key);
        return "removed";
    };
}

auto download(std::string key, std::uint64_t start, std::uint64_t end) {
    return [=](S3CloudClient& client) {
        std::ostringstream out;
        client.download(key, out, start, end);
        return out.str();
    };
}

auto upload(std::string key, std::string content) {
    return [=](S3CloudClient& client) -> std::string {
        std::istringstream in(content);
        client.upload(key, in, 0);
        return "uploaded";
    };
}

auto startMultipartUpload(std::string key) {
    return [=](S3CloudClient& client) { return client.startMultipartUpload(key, "ignored"); };
}

auto uploadPart(std::string key, std::string content) {
    return [=](S3CloudClient& client) {
        std::istringstream in(content);
        return client.uploadPart(key, "ID", {1, 10, 3, ""}, in);
    };
}

auto reusePart(std::string key) {
    return [=](S3CloudClient& client) { return client.reusePart(key, "ID", {1, 10, 20, ""}); };
}

auto abortMultipartUpload(std::string key) {
    return [=](S3CloudClient& client) -> std::string {
        client.abortMultipartUpload(key, "ID");
        return "aborted";
    };
}

auto completeMultipartUpload(std::string key) {
    return [=](S3CloudClient& client) -> std::string {
        client.completeMultipartUpload(key, "ID", {{1, 0, 0, "\"t2\""}, {0, 0, 0, "\"t1\""}});
        return "completed";
    };
}

// ---- replies

const HeaderList objectHeaders = {{"Last-Modified", "Wed, 21 Oct 2015 07:28:00 GMT"},
                                  {"Content-Length", "12345"}};
const HeaderList xml = {{"Content-Type", "application/xml"}};
const HeaderList noBody = {{"Content-Length", "0"}};

const std::string truncatedPage =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<ListBucketResult xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\"><IsTruncated>true</IsTruncated>"
    "<EncodingType>url</EncodingType><NextContinuationToken>1/a+b=</NextContinuationToken>"
    "<Contents><Key>logs/a+b%2Bc</Key><LastModified>2020-01-02T03:04:05.000Z</LastModified><Size>42</Size></"
    "Contents>"
    "<CommonPrefixes><Prefix>logs/2020%26/</Prefix></CommonPrefixes></ListBucketResult>";

const std::string emptyPage =
    "<ListBucketResult xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\"><IsTruncated>false</IsTruncated>"
    "</ListBucketResult>";

const ErrorReply denied = errorReply(403, "AccessDenied", "Access Denied");
const ErrorReply missingKey = errorReply(404, "NoSuchKey", "The specified key does not exist.");
const ErrorReply badRange = errorReply(416, "InvalidRange", "The requested range is not satisfiable");

const std::vector<WireCase>& conversations() {
    static const std::vector<WireCase> all = {
        {"StatOfAnObject",
         stat("dir/a b.txt"),
         {{"HEAD /b/dir/a%20b.txt", httpReply(200, objectHeaders)}},
         "dir/a b.txt 12345 2015-10-21T07:28:00",
         {"2  m_bucket=b key=dir/a b.txt"}},

        {"StatOfAMissingObject",
         stat("k"),
         {{"HEAD /b/k", httpReply(404, noBody)}},
         "nothing",
         {"2  m_bucket=b key=k", failureRecord(404, "", "", "No response body.", noBody)}},

        {"StatRefused",
         stat("k"),
         {{"HEAD /b/k", httpReply(403, noBody)}},
         "PermissionDeniedException(access_denied)",
         {"2  m_bucket=b key=k", failureRecord(403, "", "", "No response body.", noBody)}},

        {"StatThatTheRegionExplains",
         stat("k"),
         {{"HEAD /b/k", httpReply(400, noBody)}, {"GET /b?location", locationReply("us-west-2")}},
         "InvalidLocationException(bad_region)",
         {"2  m_bucket=b key=k", failureRecord(400, "", "", "No response body.", noBody)}},

        {"RootOfAUsableBucket",
         checkRootValidity(),
         {{"HEAD /b", httpReply(200, noBody)}},
         "valid",
         {"2  m_bucket=b"}},

        {"RootDeniedInTheRightRegion",
         checkRootValidity(),
         {{"HEAD /b", httpReply(403, noBody)}, {"GET /b?location", locationReply("eu-west-3")}},
         "valid",
         {"2  m_bucket=b"}},

        {"RootInAnotherRegion",
         checkRootValidity(),
         {{"HEAD /b", httpReply(400, noBody)}, {"GET /b?location", locationReply("us-west-2")}},
         "InvalidLocationException(bad_region)",
         {"2  m_bucket=b"}},

        {"RootOfAMissingBucket",
         checkRootValidity(),
         {{"HEAD /b", httpReply(404, noBody)},
          {"GET /b?location", errorReply(404, "NoSuchBucket", "gone").reply}},
         "InvalidLocationException(invalid_bucket)",
         {"2  m_bucket=b"}},

        {"RootWhoseLocationIsDenied",
         checkRootValidity(),
         {{"HEAD /b", httpReply(403, noBody)}, {"GET /b?location", denied.reply}},
         "PermissionDeniedException(access_denied)",
         {"2  m_bucket=b"}},

        {"ListOfATruncatedPage",
         list("logs/", "", {"/", 2}),
         {{"GET /b?delimiter=%2F&encoding-type=url&list-type=2&max-keys=2&prefix=logs%2F",
           httpReply(200, xml, truncatedPage)}},
         "logs/a b+c 42 2020-01-02T03:04:05\nlogs/2020&/\nnext: 1/a+b=",
         {"2  m_bucket=b prefix=logs/ continuationToken= "
          "options=ListOptions{Delimiter=\"/\",MaxNumEntries=2}",
          "4 Logging found 2 values"}},

        {"ListOfTheLastPage",
         list("", "1/a+b=", {"", 0}),
         {{"GET /b?continuation-token=1%2Fa%2Bb%3D&encoding-type=url&list-type=2&prefix=",
           httpReply(200, xml, emptyPage)}},
         "next: ",
         {"2  m_bucket=b prefix= continuationToken=1/a+b= "
          "options=ListOptions{Delimiter=\"\",MaxNumEntries=0}",
          "4 Logging found 0 values"}},

        {"RemoveOfAnObject",
         remove("k"),
         {{"DELETE /b/k", "HTTP/1.1 204 No Content\r\n\r\n"}},
         "removed",
         {"2  m_bucket=b key=k"}},

        {"RemoveRefused",
         remove("k"),
         {{"DELETE /b/k", denied.reply}},
         "PermissionDeniedException(access_denied)",
         {"2  m_bucket=b key=k", denied.record}},

        {"DownloadOfARange",
         download("k", 100, 104),
         {{"GET /b/k\nrange: bytes=100-104", httpReply(206, {}, "bytes")}},
         "bytes",
         {"2  m_bucket=b key=k start=100 end=104", "4 Successful operation"}},

        {"DownloadOfTheWhole",
         download("k", 7, 7),
         {{"GET /b/k\nrange: ", httpReply(200, {}, "everything")}},
         "everything",
         {"2  m_bucket=b key=k start=7 end=7", "4 Successful operation"}},

        {"DownloadOfAnEmptyObject",
         download("k", 0, 99),
         {{"GET /b/k\nrange: bytes=0-99", badRange.reply}, {"GET /b/k\nrange: ", httpReply(200)}},
         "",
         {"2  m_bucket=b key=k start=0 end=99",
          "4 InvalidRange(UNKNOWN):Unable to parse ExceptionName: InvalidRange Message: The requested range "
          "is not satisfiable",
          "4 Internal error: retrying...", "4 Successful operation"}},

        {"DownloadOfAMissingObject",
         download("k", 0, 0),
         {{"GET /b/k", missingKey.reply}, {"GET /b/k", missingKey.reply}},
         "ResourceNotFoundException(no_such_key)",
         {"2  m_bucket=b key=k start=0 end=0", "4 NoSuchKey(NO_SUCH_KEY):The specified key does not exist.",
          "4 Internal error: retrying...", "4 NoSuchKey(NO_SUCH_KEY):The specified key does not exist.",
          "4 Internal error: retrying...", missingKey.record}},

        {"UploadOfContent",
         upload("k", "content"),
         {{"PUT /b/k\ncontent-length: 7\nexpect: 100-continue\ncontent-type: binary/octet-stream",
           httpReply(200), "content"}},
         "uploaded",
         {"2  m_bucket=b key=k"}},

        {"UploadOfNothing",
         upload("k", ""),
         {{"PUT /b/k\ncontent-length: 0\nexpect: ", httpReply(200)}},
         "uploaded",
         {"2  m_bucket=b key=k"}},

        {"UploadRefused",
         upload("k", "content"),
         {{"PUT /b/k", denied.reply, "content"}},
         "PermissionDeniedException(access_denied)",
         {"2  m_bucket=b key=k", denied.record}},

        {"MultipartStart",
         startMultipartUpload("k"),
         {{"POST /b/k?uploads", httpReply(200, xml,
                                          "<InitiateMultipartUploadResult><UploadId>ID/1</UploadId>"
                                          "</InitiateMultipartUploadResult>")}},
         "ID/1",
         {"2  m_bucket=b key=k"}},

        {"MultipartPart",
         uploadPart("k", "content"),
         {{"PUT /b/k?partNumber=2&uploadId=ID\ncontent-length: 7", httpReply(200, {{"ETag", "\"t\""}}),
           "content"}},
         "\"t\"",
         {"2  m_bucket=b key=k uploadId=ID info=PartInfo{Index=1,Offset=10,Size=3,Tag=\"\"}"}},

        {"MultipartReuse",
         reusePart("dir/a b"),
         {{"PUT /b/dir/a%20b?partNumber=2&uploadId=ID\nx-amz-copy-source: b/dir/a%20b"
           "\nx-amz-copy-source-range: bytes=10-29",
           httpReply(200, xml, "<CopyPartResult><ETag>&quot;t&quot;</ETag></CopyPartResult>")}},
         "\"t\"",
         {"2  m_bucket=b key=dir/a b uploadId=ID info=PartInfo{Index=1,Offset=10,Size=20,Tag=\"\"}"}},

        {"MultipartReuseWithErrorIn200",
         reusePart("k"),
         {{"PUT /b/k?partNumber=2&uploadId=ID",
           httpReply(200, xml, errorBody("AccessDenied", "Access Denied"))}},
         "PermissionDeniedException(access_denied)",
         {"2  m_bucket=b key=k uploadId=ID info=PartInfo{Index=1,Offset=10,Size=20,Tag=\"\"}",
          failureRecord(
              200, "REQ1", "AccessDenied", "Access Denied",
              {{"Content-Type", "application/xml"},
               {"Content-Length", std::to_string(errorBody("AccessDenied", "Access Denied").size())}})}},

        {"MultipartAbort",
         abortMultipartUpload("k"),
         {{"DELETE /b/k?uploadId=ID", "HTTP/1.1 204 No Content\r\n\r\n"}},
         "aborted",
         {"2  m_bucket=b key=k uploadId=ID"}},

        {"MultipartComplete",
         completeMultipartUpload("k"),
         {{"POST /b/k?uploadId=ID",
           httpReply(200, xml,
                     "<CompleteMultipartUploadResult><ETag>&quot;t&quot;</ETag>"
                     "</CompleteMultipartUploadResult>"),
           "<?xml version=\"1.0\"?>\n"
           "<CompleteMultipartUpload xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\">\n"
           "    <Part>\n        <ETag>\"t2\"</ETag>\n        <PartNumber>2</PartNumber>\n    "
           "</Part>\n"
           "    <Part>\n        <ETag>\"t1\"</ETag>\n        <PartNumber>1</PartNumber>\n    "
           "</Part>\n"
           "</CompleteMultipartUpload>\n"}},
         "completed",
         {"2  m_bucket=b key=k uploadId=ID"}},
    };
    return all;
}

}  // namespace

class CloudClientOnTheWire : public ::testing::TestWithParam<WireCase> {};

TEST_P(CloudClientOnTheWire, GoesAsWritten) {
    expectConversation(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Operations, CloudClientOnTheWire, ::testing::ValuesIn(conversations()),
                         [](const auto& row) { return row.param.name; });
