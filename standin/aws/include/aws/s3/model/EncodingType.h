#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

namespace Aws::S3::Model {

/// How a listing encodes keys and prefixes.
enum class EncodingType { NOT_SET, url };

namespace EncodingTypeMapper {

/// NOT_SET for a name that is none.
EncodingType GetEncodingTypeForName(const Aws::String& name);

/// Empty for NOT_SET.
Aws::String GetNameForEncodingType(EncodingType value);

}  // namespace EncodingTypeMapper

}  // namespace Aws::S3::Model
