#pragma once

#include <aws/s3/S3Client.h>
#include <aws/s3/S3Errors.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// A member function of S3Client, called with every field that it requires.
struct Operation {
    const char* name;
    bool isOfObject;           ///< else of a bucket
    bool answersWithDocument;  ///< else with an object's bytes, or with a head alone
    std::optional<Aws::S3::S3Error> (*failureOf)(const Aws::S3::S3Client& client, const std::string& bucket,
                                                 const std::string& key);
};

void PrintTo(const Operation& operation, std::ostream* out);

/// All twelve.
const std::vector<Operation>& allOperations();

std::vector<Operation> objectOperations();
std::vector<Operation> documentOperations();

/// An SDK client of default credentials of the embedded server, for a server at `endpoint` (with scheme),
/// without retries.
Aws::S3::S3Client clientOf(const std::string& endpoint, const std::string& sessionToken = "");
