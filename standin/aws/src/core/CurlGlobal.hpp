#pragma once

namespace standin::aws {

/// Holds libcurl's process-wide part ready while it lives. libcurl counts its holders itself, and locks.
class CurlGlobal {
public:
    /// Throws std::runtime_error when libcurl can't be readied.
    CurlGlobal();
    ~CurlGlobal();
    CurlGlobal(const CurlGlobal&) = delete;
    CurlGlobal& operator=(const CurlGlobal&) = delete;
};

}  // namespace standin::aws
