#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <memory>

#include "http/Wire.hpp"

namespace s3server {

/// A wire over an accepted socket, through TLS if a context is given, which must outlive it.
std::unique_ptr<Wire> makeWire(boost::asio::ip::tcp::socket socket, boost::asio::ssl::context* tls);

}  // namespace s3server
