#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>
#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>
#include <aws/s3/model/EncodingType.h>
#include <aws/s3/model/Field.h>

#include <utility>

namespace Aws::S3::Model {

/// Asks for one page of a bucket's keys, in their order as bytes.
class ListObjectsV2Request : public BucketRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "ListObjectsV2"; }

    /// Keys that share a prefix up to it, after Prefix, become one common prefix.
    const Aws::String& GetDelimiter() const { return delimiter_.get(); }
    bool DelimiterHasBeenSet() const { return delimiter_.isSet(); }
    void SetDelimiter(Aws::String delimiter) { delimiter_.set(std::move(delimiter)); }

    EncodingType GetEncodingType() const { return encodingType_.get(); }
    bool EncodingTypeHasBeenSet() const { return encodingType_.isSet(); }
    void SetEncodingType(EncodingType encodingType) { encodingType_.set(encodingType); }

    /// Most entries of the page; S3 itself gives no more than 1000.
    int GetMaxKeys() const { return maxKeys_.get(); }
    bool MaxKeysHasBeenSet() const { return maxKeys_.isSet(); }
    void SetMaxKeys(int maxKeys) { maxKeys_.set(maxKeys); }

    /// Only keys that begin with it.
    const Aws::String& GetPrefix() const { return prefix_.get(); }
    bool PrefixHasBeenSet() const { return prefix_.isSet(); }
    void SetPrefix(Aws::String prefix) { prefix_.set(std::move(prefix)); }

    /// The page before's GetNextContinuationToken().
    const Aws::String& GetContinuationToken() const { return continuationToken_.get(); }
    bool ContinuationTokenHasBeenSet() const { return continuationToken_.isSet(); }
    void SetContinuationToken(Aws::String continuationToken) {
        continuationToken_.set(std::move(continuationToken));
    }

    /// Only keys after it; for a first page.
    const Aws::String& GetStartAfter() const { return startAfter_.get(); }
    bool StartAfterHasBeenSet() const { return startAfter_.isSet(); }
    void SetStartAfter(Aws::String startAfter) { startAfter_.set(std::move(startAfter)); }

private:
    Field<Aws::String> delimiter_;
    Field<EncodingType> encodingType_;
    Field<int> maxKeys_;
    Field<Aws::String> prefix_;
    Field<Aws::String> continuationToken_;
    Field<Aws::String> startAfter_;
};

}  // namespace Aws::S3::Model
