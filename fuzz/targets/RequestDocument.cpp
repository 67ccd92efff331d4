#include <algorithm>

#include "FuzzTarget.hpp"
#include "TestBucket.hpp"
#include "text/Digest.hpp"
#include "text/Encoding.hpp"

using namespace fuzz;
using namespace s3server;

namespace {

/// One request with that body, as it stands after its head and body have arrived.
Reply ask(std::string_view method, std::string_view target, std::string_view body) {
    Options options = frozenInTime();
    options.checkSignatures = false;
    Service service(options);
    fill(service.store());
    Request head;
    head.method = method;
    head.target = target;
    head.headers = {{"content-length", std::to_string(body.size())},
                    {"content-md5", base64(digestOf(Digest::md5(), body))}};
    Exchange exchange = service.accept(std::move(head));
    while (!body.empty()) {
        const auto space = exchange.space();
        const auto count = body.copy(space.data, std::min(space.size, body.size()));
        exchange.commit(count);
        body.remove_prefix(count);
    }
    return service.answer(exchange);
}

void checkAnswer(const Reply& reply, std::initializer_list<int> statuses) {
    require(std::find(statuses.begin(), statuses.end(), reply.status) != statuses.end(),
            "a document is understood or refused");
}

}  // namespace

// The documents that requests bring, each sent to all operations that take one.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto body = textOf(data, size);
    checkAnswer(ask("POST", "/b?delete", body), {200, 400, 501});
    checkAnswer(ask("POST", "/b/big?uploadId=u", body), {200, 400});
    checkAnswer(ask("PUT", "/new", body), {200, 400});
    return 0;
}
