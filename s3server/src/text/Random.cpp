#include "text/Random.hpp"

#include <openssl/rand.h>

#include <stdexcept>

namespace s3server {

std::string randomBytes(std::size_t count) {
    std::string bytes(count, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(count)) != 1)
        throw std::runtime_error("OpenSSL has no random bytes");
    return bytes;
}

}  // namespace s3server
