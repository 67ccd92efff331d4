# Read by the library, which is made of core and s3 together.
set(STANDIN_AWS_S3_SOURCES
  AbortMultipartUpload.cpp
  Answer.cpp
  BucketLocationConstraint.cpp
  CompleteMultipartUpload.cpp
  CreateMultipartUpload.cpp
  DeleteObject.cpp
  EncodingType.cpp
  EndpointRules.cpp
  ErrorMarshalling.cpp
  GetBucketLocation.cpp
  GetObject.cpp
  HeadBucket.cpp
  HeadObject.cpp
  ListObjectsV2.cpp
  PutObject.cpp
  S3Client.cpp
  S3ClientConfiguration.cpp
  S3EndpointProvider.cpp
  S3Errors.cpp
  Service.cpp
  UploadPart.cpp
  UploadPartCopy.cpp
  Url.cpp
  Xml.cpp
)
list(TRANSFORM STANDIN_AWS_S3_SOURCES PREPEND "${CMAKE_CURRENT_LIST_DIR}/")
