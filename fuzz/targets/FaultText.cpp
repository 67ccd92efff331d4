#include <stdexcept>

#include "FuzzTarget.hpp"
#include "s3server/Fault.hpp"

// The command line's words for a planned failure.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const auto fault = s3server::Fault::parse(fuzz::textOf(data, size));
        fuzz::require(s3server::Fault::parse(fault.text()).text() == fault.text(),
                      "it is read as it is written");
        const auto* const reply = std::get_if<s3server::fault::Reply>(&fault.action());
        fuzz::require(!reply || (reply->status >= 200 && reply->status <= 999), "a status has three digits");
    } catch (const std::invalid_argument& refusal) {
        fuzz::require(*refusal.what() != '\0', "a refusal says why");
    }
    return 0;
}
