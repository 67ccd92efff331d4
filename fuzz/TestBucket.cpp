#include "TestBucket.hpp"

#include "text/Digest.hpp"
#include "text/Encoding.hpp"

namespace fuzz {
namespace {

using namespace s3server;

const TimePoint now = *parseSigningDate("20130524T000000Z");

ObjectPointer object(std::string text) {
    std::string etag = hex(digestOf(Digest::md5(), text));
    return std::make_shared<const Object>(Object{Bytes(std::move(text)), std::move(etag), {}, now});
}

std::shared_ptr<const Part> part(std::string text) {
    std::string md5 = digestOf(Digest::md5(), text);
    return std::make_shared<const Part>(Part{Bytes(std::move(text)), std::move(md5), now});
}

}  // namespace

Options frozenInTime() {
    Options options;
    options.clock = [] { return now; };
    return options;
}

void fill(Store& store) {
    static const auto smallest = part(std::string(std::size_t{5} << 20U, '\0'));
    store.createBucket({"b", "", now});
    store.put("b", "k", object("hello"));
    store.open("b", {"big", "u", {}, now, {}});
    store.putPart("b", "big", "u", 1, smallest);
    store.putPart("b", "big", "u", 2, part("x"));
}

}  // namespace fuzz
