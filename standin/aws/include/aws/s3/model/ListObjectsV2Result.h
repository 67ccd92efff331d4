#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>
#include <aws/core/utils/memory/stl/AWSVector.h>
#include <aws/s3/model/CommonPrefix.h>
#include <aws/s3/model/EncodingType.h>
#include <aws/s3/model/Object.h>

#include <utility>

namespace Aws::S3::Model {

/// One page of a listing. Keys and prefixes are as S3 sent them: with EncodingType url, URL-encoded.
class ListObjectsV2Result {
public:
    bool GetIsTruncated() const { return isTruncated_; }
    void SetIsTruncated(bool isTruncated) { isTruncated_ = isTruncated; }

    const Aws::Vector<Object>& GetContents() const { return contents_; }
    void SetContents(Aws::Vector<Object> contents) { contents_ = std::move(contents); }
    void AddContents(Object added) { contents_.push_back(std::move(added)); }

    const Aws::String& GetName() const { return name_; }
    void SetName(Aws::String name) { name_ = std::move(name); }

    const Aws::String& GetPrefix() const { return prefix_; }
    void SetPrefix(Aws::String prefix) { prefix_ = std::move(prefix); }

    const Aws::String& GetDelimiter() const { return delimiter_; }
    void SetDelimiter(Aws::String delimiter) { delimiter_ = std::move(delimiter); }

    int GetMaxKeys() const { return maxKeys_; }
    void SetMaxKeys(int maxKeys) { maxKeys_ = maxKeys; }

    const Aws::Vector<CommonPrefix>& GetCommonPrefixes() const { return commonPrefixes_; }
    void SetCommonPrefixes(Aws::Vector<CommonPrefix> commonPrefixes) {
        commonPrefixes_ = std::move(commonPrefixes);
    }
    void AddCommonPrefixes(CommonPrefix added) { commonPrefixes_.push_back(std::move(added)); }

    EncodingType GetEncodingType() const { return encodingType_; }
    void SetEncodingType(EncodingType encodingType) { encodingType_ = encodingType; }

    int GetKeyCount() const { return keyCount_; }
    void SetKeyCount(int keyCount) { keyCount_ = keyCount; }

    const Aws::String& GetContinuationToken() const { return continuationToken_; }
    void SetContinuationToken(Aws::String continuationToken) {
        continuationToken_ = std::move(continuationToken);
    }

    /// Where the next page begins; empty after the last.
    const Aws::String& GetNextContinuationToken() const { return nextContinuationToken_; }
    void SetNextContinuationToken(Aws::String nextContinuationToken) {
        nextContinuationToken_ = std::move(nextContinuationToken);
    }

    const Aws::String& GetStartAfter() const { return startAfter_; }
    void SetStartAfter(Aws::String startAfter) { startAfter_ = std::move(startAfter); }

private:
    bool isTruncated_ = false;
    Aws::Vector<Object> contents_;
    Aws::String name_;
    Aws::String prefix_;
    Aws::String delimiter_;
    int maxKeys_ = 0;
    Aws::Vector<CommonPrefix> commonPrefixes_;
    EncodingType encodingType_ = EncodingType::NOT_SET;
    int keyCount_ = 0;
    Aws::String continuationToken_;
    Aws::String nextContinuationToken_;
    Aws::String startAfter_;
};

}  // namespace Aws::S3::Model
