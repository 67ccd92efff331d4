#pragma once

#include <boost/asio/buffer.hpp>
#include <boost/asio/error.hpp>
#include <boost/system/system_error.hpp>
#include <cstddef>

#include "http/Wire.hpp"

namespace s3server {

/// Beast's view of a Wire, for reading.
struct ReadStream {
    Wire& wire;

    template <class Buffers>
    std::size_t read_some(const Buffers& buffers, boost::system::error_code& error) {
        error = {};
        for (auto at = boost::asio::buffer_sequence_begin(buffers);
             at != boost::asio::buffer_sequence_end(buffers); ++at) {
            const boost::asio::mutable_buffer buffer(*at);
            if (buffer.size() == 0) continue;
            const std::size_t count = wire.read(static_cast<char*>(buffer.data()), buffer.size());
            if (count == 0) error = boost::asio::error::eof;
            return count;
        }
        return 0;
    }
    template <class Buffers>
    std::size_t read_some(const Buffers& buffers) {
        boost::system::error_code error;
        const std::size_t count = read_some(buffers, error);
        if (error) throw boost::system::system_error(error);
        return count;
    }
};

}  // namespace s3server
