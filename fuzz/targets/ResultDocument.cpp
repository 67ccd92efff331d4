#include <aws/s3/model/CompleteMultipartUploadResult.h>
#include <aws/s3/model/CreateMultipartUploadRequest.h>
#include <aws/s3/model/CreateMultipartUploadResult.h>
#include <aws/s3/model/GetBucketLocationResult.h>
#include <aws/s3/model/ListObjectsV2Request.h>
#include <aws/s3/model/ListObjectsV2Result.h>
#include <aws/s3/model/UploadPartCopyRequest.h>
#include <aws/s3/model/UploadPartCopyResult.h>

#include <algorithm>

#include "FuzzTarget.hpp"
#include "s3/Answer.hpp"
#include "s3/Operations.hpp"

using namespace fuzz;
using namespace standin::aws::s3;
using namespace Aws::S3::Model;

namespace {

template <typename Request>
bool hasFault(const Answer& answer) {
    return !describe(Request()).faultOf(answer).empty();
}

bool isEmpty(const Aws::S3::Model::ListObjectsV2Result& page) {
    return page.GetContents().empty() && page.GetCommonPrefixes().empty() && !page.GetIsTruncated() &&
           page.GetNextContinuationToken().empty();
}

void checkListing(Answer& answer, std::string_view text) {
    const auto page = listObjectsV2Result(answer);
    const auto tags = static_cast<std::size_t>(std::count(text.begin(), text.end(), '<'));
    require(page.GetContents().size() + page.GetCommonPrefixes().size() <= tags, "an entry has a tag");
    require(answer.root() != nullptr || isEmpty(page), "a document without root lists nothing");
    const bool goesNowhere = page.GetIsTruncated() && page.GetNextContinuationToken().empty();
    require(!goesNowhere || hasFault<ListObjectsV2Request>(answer),
            "a truncated listing says where it goes on");
}

void checkUploads(Answer& answer) {
    const auto created = createMultipartUploadResult(answer);
    const auto completed = completeMultipartUploadResult(answer);
    const auto copied = uploadPartCopyResult(answer);
    require(created.GetKey() == completed.GetKey(), "all read alike");
    require(completed.GetETag() == copied.GetCopyPartResult().GetETag(), "all read alike");
    const bool nothing = created.GetUploadId().empty() && completed.GetLocation().empty();
    require(answer.root() != nullptr || nothing, "a document without root holds nothing");
    require(hasFault<CreateMultipartUploadRequest>(answer) == created.GetUploadId().empty(),
            "an upload has an id");
    require(hasFault<UploadPartCopyRequest>(answer) == copied.GetCopyPartResult().GetETag().empty(),
            "a part has a tag");
}

/// Only for short names: each that is new is remembered until the process ends.
void checkLocation(Answer& answer) {
    if (answer.root() == nullptr) return;
    const std::string name = trimmed(printedText(*answer.root()));
    if (name.size() > 1) return;
    const auto region = getBucketLocationResult(answer).GetLocationConstraint();
    require(
        Aws::S3::Model::BucketLocationConstraintMapper::GetNameForBucketLocationConstraint(region) == name,
        "a region keeps its name");
}

}  // namespace

// The documents of successful answers, each read as all of them.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = textOf(data, size);
    Answer answer;
    answer.document = std::make_unique<const XmlDocument>(text);
    checkListing(answer, text);
    checkUploads(answer);
    checkLocation(answer);
    return 0;
}
