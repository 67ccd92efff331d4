#include "core/BufferStream.hpp"

namespace standin::aws {

ReadBuffer::ReadBuffer(std::string bytes) : bytes_(std::move(bytes)) {
    setg(bytes_.data(), bytes_.data(), bytes_.data() + bytes_.size());
}

ReadBuffer::pos_type ReadBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                         std::ios_base::openmode which) {
    const off_type base = from == std::ios_base::beg   ? 0
                          : from == std::ios_base::cur ? gptr() - eback()
                                                       : egptr() - eback();
    return seekpos(base + offset, which);
}

ReadBuffer::pos_type ReadBuffer::seekpos(pos_type position, std::ios_base::openmode which) {
    const off_type offset = position;
    if ((which & std::ios_base::in) == 0 || offset < 0 || offset > egptr() - eback()) return off_type{-1};
    setg(eback(), eback() + offset, egptr());
    return position;
}

}  // namespace standin::aws
