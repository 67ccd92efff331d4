#include <boost/numeric/conversion/cast.hpp>
#include <sstream>

#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using namespace Aws::S3::Model;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

constexpr std::uint64_t tooBigIndex = 2147483647;

UploadPartOutcome storedPart(const std::string& tag) {
    UploadPartResult result;
    result.SetETag(tag);
    return result;
}

UploadPartCopyOutcome copiedPart(const std::string& tag) {
    CopyPartResult copy;
    copy.SetETag(tag);
    UploadPartCopyResult result;
    result.SetCopyPartResult(copy);
    return result;
}

std::vector<std::string> texts(const std::vector<PartInfo>& parts) {
    std::vector<std::string> all;
    for (const auto& part : parts) {
        std::ostringstream out;
        out << part;
        all.push_back(out.str());
    }
    return all;
}

}  // namespace

class ListParts : public CloudClientTest {
protected:
    std::vector<PartInfo> partsOfObjectWithSize(long long size) {
        EXPECT_CALL(*s3, HeadObject(_)).WillOnce([size](auto&) {
            HeadObjectResult result;
            result.SetContentLength(size);
            return HeadObjectOutcome(result);
        });
        return client->listParts("k");
    }
};

TEST_F(ListParts, CutsTheStoredObjectIntoPartsOf5MiB) {
    EXPECT_THAT(texts(partsOfObjectWithSize(12582912)),
                ElementsAre(R"(PartInfo{Index=0,Offset=0,Size=5242880,Tag=""})",
                            R"(PartInfo{Index=1,Offset=5242880,Size=5242880,Tag=""})",
                            R"(PartInfo{Index=2,Offset=10485760,Size=2097152,Tag=""})"));
    EXPECT_THAT(texts(partsOfObjectWithSize(5242880)),
                ElementsAre(R"(PartInfo{Index=0,Offset=0,Size=5242880,Tag=""})"));
    EXPECT_THAT(texts(partsOfObjectWithSize(1)), ElementsAre(R"(PartInfo{Index=0,Offset=0,Size=1,Tag=""})"));
}

TEST_F(ListParts, CutsObjectsThatTakeMoreThan32BitsToMeasure) {
    const auto parts = partsOfObjectWithSize(5368709121);  // 5 GiB and a byte
    ASSERT_EQ(parts.size(), 1025u);
    EXPECT_EQ(parts.back().Offset, 5368709120u);
    EXPECT_EQ(parts.back().Size, 1u);
}

TEST_F(ListParts, HasNoPartsForAnEmptyObject) {
    EXPECT_THAT(partsOfObjectWithSize(0), IsEmpty());
}

TEST_F(ListParts, RaisesAMissingObjectWithoutIdentifier) {
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) { return s3Error(S3Errors::NO_SUCH_KEY); });
    try {
        client->listParts("k");
        FAIL() << "nothing was thrown";
    } catch (const ResourceNotFoundException& failure) {
        EXPECT_EQ(failure.context(), std::nullopt);
        EXPECT_STREQ(failure.what(), "Cloud Resource not found");
    }
}

TEST_F(ListParts, LetsTheFailuresOfStatPass) {
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) { return s3Error(S3Errors::ACCESS_DENIED); });
    expectFailure<PermissionDeniedException>(u"access_denied", [&] { client->listParts("k"); });
}

TEST_F(ListParts, AsksTheStatOfADerivedClient) {
    struct Stored : storage::s3provider::S3CloudClient {
        using S3CloudClient::S3CloudClient;
        boost::optional<EntryInfo> stat(const std::string& key) override { return EntryInfo(key, 7, {}); }
    };
    Stored derived("b", s3, {1, 0}, "eu-west-3");
    CloudClient& asHost = derived;
    EXPECT_EQ(asHost.listParts("k").size(), 1u);
}

TEST_F(ListParts, LogsItsArgumentsBeforeThoseOfStat) {
    LogCapture log({clientChannel}, 2);
    partsOfObjectWithSize(0);
    EXPECT_THAT(levelsAndTexts(log), ElementsAre(Pair(2, " m_bucket=b key=k"), Pair(2, " m_bucket=b key=k")));
}

class StartMultipartUpload : public CloudClientTest {};

TEST_F(StartMultipartUpload, TracesTheUploadIdItReturns) {
    EXPECT_CALL(*s3, CreateMultipartUpload(_)).WillOnce([](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        EXPECT_EQ(request.GetKey(), "k");
        CreateMultipartUploadResult result;
        result.SetUploadId("id1");
        return CreateMultipartUploadOutcome(result);
    });
    LogCapture log({clientChannel}, allLevels);
    EXPECT_EQ(client->startMultipartUpload("k", "x"), "id1");
    const auto records = log.records();
    ASSERT_EQ(records.size(), 6u);
    const std::string signature = records[0].text;
    EXPECT_THAT(levelsAndTexts(log),
                ElementsAre(Pair(32, signature), Pair(2, " m_bucket=b key=k"), Pair(32, signature),
                            Pair(128, "out=id1"), Pair(64, signature), Pair(64, signature)));
    const auto indent = records[0].indent;
    EXPECT_EQ(records[2].indent, indent + 1);
    EXPECT_EQ(records[3].indent, indent + 2);
    EXPECT_EQ(records[4].indent, indent + 1);
    EXPECT_EQ(records[5].indent, indent);
}

TEST_F(StartMultipartUpload, WritesTheIdWhateverTheMaskSaysOfItsLevel) {
    EXPECT_CALL(*s3, CreateMultipartUpload(_)).WillRepeatedly([](auto&) {
        return CreateMultipartUploadOutcome(CreateMultipartUploadResult());
    });
    {
        LogCapture log({clientChannel}, 32);
        client->startMultipartUpload("k", "");
        ASSERT_EQ(log.records().size(), 5u);
        EXPECT_EQ(log.records()[2].level, 128);
    }
    LogCapture log({clientChannel}, 128);
    client->startMultipartUpload("k", "");
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(StartMultipartUpload, IgnoresItsSecondArgument) {
    std::vector<std::string> payloads;
    EXPECT_CALL(*s3, CreateMultipartUpload(_)).Times(2).WillRepeatedly([&](const auto& request) {
        payloads.push_back(request.GetBucket() + "/" + request.GetKey());
        return CreateMultipartUploadOutcome(CreateMultipartUploadResult());
    });
    client->startMultipartUpload("k", "");
    client->startMultipartUpload("k", "text/plain");
    EXPECT_THAT(payloads, ElementsAre("b/k", "b/k"));
}

TEST_F(StartMultipartUpload, RaisesAFailure) {
    EXPECT_CALL(*s3, CreateMultipartUpload(_)).WillOnce([](auto&) {
        return s3Error(S3Errors::ACCESS_DENIED);
    });
    LogCapture log({clientChannel}, 512 | 128);
    expectFailure<PermissionDeniedException>(u"access_denied",
                                             [&] { client->startMultipartUpload("k", ""); });
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].level, 512);
}

class UploadPart : public CloudClientTest {
protected:
    std::istringstream in{"more than two bytes"};
};

TEST_F(UploadPart, SendsTheWholeStreamWhateverTheSizeSays) {
    EXPECT_CALL(*s3, UploadPart(_)).WillOnce([&](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        EXPECT_EQ(request.GetKey(), "k");
        EXPECT_EQ(request.GetUploadId(), "id");
        EXPECT_EQ(request.GetPartNumber(), 3);
        EXPECT_EQ(request.GetBody()->rdbuf(), in.rdbuf());
        EXPECT_FALSE(request.ContentLengthHasBeenSet());
        return storedPart("\"tag\"");
    });
    LogCapture log({clientChannel}, 2);
    EXPECT_EQ(client->uploadPart("k", "id", {2, 5, 2, "old"}, in), "\"tag\"");
    EXPECT_THAT(levelsAndTexts(log), ElementsAre(Pair(2,
                                                      " m_bucket=b key=k uploadId=id info="
                                                      R"(PartInfo{Index=2,Offset=5,Size=2,Tag="old"})")));
}

TEST_F(UploadPart, NumbersPartsFromOne) {
    std::vector<int> numbers;
    EXPECT_CALL(*s3, UploadPart(_)).WillRepeatedly([&](const auto& request) {
        numbers.push_back(request.GetPartNumber());
        return storedPart("t");
    });
    client->uploadPart("k", "id", {0, 0, 0, ""}, in);
    client->uploadPart("k", "id", {2147483646, 0, 0, ""}, in);
    client->uploadPart("k", "id", {UINT64_MAX, 0, 0, ""}, in);
    EXPECT_THAT(numbers, ElementsAre(1, 2147483647, 0));
}

TEST_F(UploadPart, SendsNothingForAnIndexBeyondAnyPartNumber) {
    try {
        client->uploadPart("k", "id", {tooBigIndex, 0, 0, ""}, in);
        FAIL() << "nothing was thrown";
    } catch (const boost::numeric::positive_overflow& failure) {
        EXPECT_STREQ(failure.what(), "bad numeric conversion: positive overflow");
    }
}

TEST_F(UploadPart, RaisesAFailure) {
    EXPECT_CALL(*s3, UploadPart(_)).WillOnce([](auto&) {
        return s3Error(S3Errors::NO_SUCH_UPLOAD, "NoSuchUpload");
    });
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("eu-west-3"); });
    expectFailure<UnknownErrorException>(noIdentifier, [&] {
        client->uploadPart("k", "id", {0, 0, 0, ""}, in);
    });
}

class ReusePart : public CloudClientTest {
protected:
    std::string rangeSentFor(std::uint64_t offset, std::uint64_t size) {
        std::string range;
        EXPECT_CALL(*s3, UploadPartCopy(_)).WillOnce([&](const auto& request) {
            range = request.GetCopySourceRange();
            return copiedPart("t");
        });
        client->reusePart("k", "id", {0, offset, size, ""});
        return range;
    }
};

TEST_F(ReusePart, CopiesARangeOfTheObjectUnderTheSameKey) {
    EXPECT_CALL(*s3, UploadPartCopy(_)).WillOnce([](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        EXPECT_EQ(request.GetKey(), "dir/a b+c%");
        EXPECT_EQ(request.GetUploadId(), "id");
        EXPECT_EQ(request.GetPartNumber(), 3);
        EXPECT_EQ(request.GetCopySource(), "b/dir/a b+c%");
        EXPECT_EQ(request.GetCopySourceRange(), "bytes=10485760-12582911");
        return copiedPart("\"copied\"");
    });
    LogCapture log({clientChannel}, 2);
    EXPECT_EQ(client->reusePart("dir/a b+c%", "id", {2, 10485760, 2097152, "old"}), "\"copied\"");
    EXPECT_THAT(levelsAndTexts(log),
                ElementsAre(Pair(2,
                                 " m_bucket=b key=dir/a b+c% uploadId=id info="
                                 R"(PartInfo{Index=2,Offset=10485760,Size=2097152,Tag="old"})")));
}

TEST_F(ReusePart, ComputesTheEndOfAnEmptyRangeUnsigned) {
    EXPECT_EQ(rangeSentFor(10, 0), "bytes=10-9");
    EXPECT_EQ(rangeSentFor(0, 0), "bytes=0-18446744073709551615");
}

TEST_F(ReusePart, SendsNothingForAnIndexBeyondAnyPartNumber) {
    EXPECT_THROW(client->reusePart("k", "id", {tooBigIndex, 0, 1, ""}), boost::numeric::positive_overflow);
}

TEST_F(ReusePart, RaisesAFailure) {
    EXPECT_CALL(*s3, UploadPartCopy(_)).WillOnce([](auto&) { return s3Error(S3Errors::ACCESS_DENIED); });
    expectFailure<PermissionDeniedException>(u"access_denied", [&] {
        client->reusePart("k", "id", {0, 0, 1, ""});
    });
}

class AbortMultipartUpload : public CloudClientTest {};

TEST_F(AbortMultipartUpload, ThrowsTheUploadAway) {
    EXPECT_CALL(*s3, AbortMultipartUpload(_)).WillOnce([](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        EXPECT_EQ(request.GetKey(), "k");
        EXPECT_EQ(request.GetUploadId(), "id");
        return AbortMultipartUploadOutcome(AbortMultipartUploadResult());
    });
    LogCapture log({clientChannel}, 2);
    client->abortMultipartUpload("k", "id");
    EXPECT_THAT(levelsAndTexts(log), ElementsAre(Pair(2, " m_bucket=b key=k uploadId=id")));
}

TEST_F(AbortMultipartUpload, RaisesAFailure) {
    EXPECT_CALL(*s3, AbortMultipartUpload(_)).WillOnce([](auto&) {
        return s3Error(S3Errors::ACCESS_DENIED);
    });
    expectFailure<PermissionDeniedException>(u"access_denied",
                                             [&] { client->abortMultipartUpload("k", "id"); });
}

class CompleteMultipartUpload : public CloudClientTest {};

TEST_F(CompleteMultipartUpload, SendsThePartsInTheOrderGiven) {
    std::vector<std::pair<int, std::string>> sent;
    EXPECT_CALL(*s3, CompleteMultipartUpload(_)).WillOnce([&](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        EXPECT_EQ(request.GetKey(), "k");
        EXPECT_EQ(request.GetUploadId(), "id");
        for (const auto& part : request.GetMultipartUpload().GetParts()) {
            sent.emplace_back(part.GetPartNumber(), part.GetETag());
        }
        return CompleteMultipartUploadOutcome(CompleteMultipartUploadResult());
    });
    LogCapture log({clientChannel}, 2);
    client->completeMultipartUpload("k", "id", {{2, 0, 0, "c"}, {0, 0, 0, "a"}, {1, 0, 0, "b"}});
    EXPECT_THAT(sent, ElementsAre(Pair(3, "c"), Pair(1, "a"), Pair(2, "b")));
    EXPECT_THAT(levelsAndTexts(log), ElementsAre(Pair(2, " m_bucket=b key=k uploadId=id")));
}

TEST_F(CompleteMultipartUpload, SendsAnEmptyListAndRaisesTheAnswer) {
    EXPECT_CALL(*s3, CompleteMultipartUpload(_)).WillOnce([](const auto& request) {
        EXPECT_TRUE(request.MultipartUploadHasBeenSet());
        EXPECT_TRUE(request.GetMultipartUpload().GetParts().empty());
        return s3Error(S3Errors::UNKNOWN, "MalformedXML", "The XML you provided was not well-formed");
    });
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("eu-west-3"); });
    expectFailure<UnknownErrorException>(noIdentifier,
                                         [&] { client->completeMultipartUpload("k", "id", {}); });
}

TEST_F(CompleteMultipartUpload, SendsNothingWhenAnyIndexIsBeyondAnyPartNumber) {
    EXPECT_THROW(client->completeMultipartUpload("k", "id", {{0, 0, 0, "a"}, {tooBigIndex, 0, 0, "b"}}),
                 boost::numeric::positive_overflow);
}
