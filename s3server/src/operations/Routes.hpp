#pragma once

#include <string_view>

#include "operations/Operations.hpp"

namespace s3server {

enum class Resource { Service, Bucket, Object };

/// What an operation may be sent as a body, and its limit: a document 2 MiB, an object 5 GiB.
enum class BodyKind { Document, Object };

struct Route {
    std::string_view operation;
    std::string_view method;
    Resource resource;
    /// The query parameters that make the operation another one, sorted, joined by &.
    std::string_view subresources;
    /// With x-amz-copy-source.
    bool copies;
    BodyKind body;
    /// Whether the signature may be for another region than the bucket's.
    bool anyRegion;
    Operation perform;
};

/// The operation that a located request asks for. Throws S3Error MethodNotAllowed or NotImplemented.
const Route& findRoute(const Request& request);

/// Whether the server has an operation of that name.
bool isOperation(std::string_view name);

}  // namespace s3server
