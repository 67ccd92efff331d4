#pragma once

#include "replay/RecordedCase.hpp"

/// What a case of defaults.jsonl shows when it is played again, in the form of its `observed`; those of kind
/// "metadata" in the form of {"observed": ..., "requests": ...}. Each changes the environment meanwhile.
namespace replay {

Json observeClientConfiguration(const Json& recorded);
Json observeRetryStrategies(const Json& recorded);

Json observeFileNames(const Json& recorded);
Json observeCredentialsSources(const Json& recorded);
Json observeProfileCredentials(const Json& recorded);
Json observeProfileLoader(const Json& recorded);

Json observeMetadata(const Json& recorded);

Json observeTable(const Json& recorded);
Json observeValues(const Json& recorded);
Json observeDateParsing(const Json& recorded);

Json observeEnvironmentProxy(const Json& recorded);
Json observeConnectTimeout(const Json& recorded);

}  // namespace replay
