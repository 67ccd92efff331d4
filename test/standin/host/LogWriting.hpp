#pragma once

#include <foundation/log/diagnostic_logger.hpp>

#include <boost/log/sources/record_ostream.hpp>

#include <string>
#include <utility>

/// Writes one record without looking at the mask; whether a sink wanted it.
inline bool writeRecord(foundation::log::diagnostic_logger& logger, unsigned level, const std::string& text) {
    auto record = logger.openRecord(level);
    if (!record) return false;
    boost::log::record_ostream(record) << text << std::flush;
    logger.pushRecord(std::move(record));
    return true;
}
