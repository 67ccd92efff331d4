#include <aws/s3/model/EncodingType.h>

namespace Aws::S3::Model::EncodingTypeMapper {

EncodingType GetEncodingTypeForName(const Aws::String& name) {
    return name == "url" ? EncodingType::url : EncodingType::NOT_SET;
}

Aws::String GetNameForEncodingType(EncodingType value) {
    return value == EncodingType::url ? "url" : "";
}

}  // namespace Aws::S3::Model::EncodingTypeMapper
