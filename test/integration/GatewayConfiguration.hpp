#pragma once

#include <string>
#include <string_view>

namespace testsupport {

/// Ceph's configuration of a gateway for tests, with places to fill in: {folder}, {monitor}, {http}, {https},
/// {certificate}, {key}, {host}.
constexpr std::string_view gatewayConfiguration = R"(
[global]
fsid = 5d8f7a52-93c4-4a27-8a5e-1a54b7b0f3c1
mon host = v2:127.0.0.1:{monitor}
public addr = 127.0.0.1
cluster addr = 127.0.0.1
ms bind ipv6 = false
ms bind msgr1 = false

# Nobody to keep out. The secure modes want keys that aren't there, and wait for them.
auth cluster required = none
auth service required = none
auth client required = none
ms cluster mode = crc
ms service mode = crc
ms client mode = crc
ms mon cluster mode = crc
ms mon service mode = crc
ms mon client mode = crc

# One store, in memory, without replicas.
osd objectstore = memstore
memstore device bytes = 2147483648
osd crush chooseleaf type = 0
mon allow pool size one = true
osd pool default size = 1
osd pool default min size = 1
osd pool default pg num = 1
osd pool default pgp num = 1
osd pool default pg autoscale mode = off

# Decide at once: there is no second monitor to wait for. Give up in seconds, not in minutes.
paxos propose interval = 0.02
paxos min wait = 0.01
client mount timeout = 30

rgw frontends = beast endpoint=127.0.0.1:{http} ssl_endpoint=127.0.0.1:{https} ssl_certificate={certificate} ssl_private_key={key}
rgw dns name = {host}
rgw thread pool size = 64

run dir = {folder}
mon data = {folder}/mon
osd data = {folder}/osd
rgw data = {folder}/rgw
keyring = {folder}/keyring
admin socket =
log to file = false
log to stderr = true
mon cluster log to file = false
)";

}  // namespace testsupport
