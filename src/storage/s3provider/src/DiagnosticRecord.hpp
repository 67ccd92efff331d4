#pragma once

#include <boost/log/sources/record_ostream.hpp>
#include <foundation/log/diagnostic_logger.hpp>
#include <locale>
#include <ostream>
#include <type_traits>
#include <utility>

namespace storage::s3provider {

/// What a diagnostic record tells; each value is a bit of the logger's mask of enabled levels.
enum LogLevel : unsigned {
    LogArguments = 2,
    LogResults = 4,
    LogSwallowedExceptions = 16,
    LogCallEntry = 32,
    LogCallExit = 64,
    LogResultValue = 128,
    LogConfigurationFailures = 256,
    LogFailedRequests = 512,
};

namespace detail {

// A piece that is a function is asked for its value only here, when the record is really written.
template <class Piece>
void insertPiece(std::ostream& out, const Piece& piece) {
    if constexpr (std::is_invocable_v<const Piece&>) {
        out << piece();
    } else {
        out << piece;
    }
}

}  // namespace detail

/// Does something for the log, and tells whether it went well: a log that fails must not change what an
/// operation does.
template <class Action>
bool withoutFailing(Action&& action) noexcept {
    try {
        action();
        return true;
    } catch (...) {
        return false;
    }
}

/// Writes one record made of `pieces` whatever the mask says, unless the logging core is disabled. A record
/// whose text can't be made whole is dropped.
template <class... Pieces>
void writeRecord(foundation::log::diagnostic_logger& logger, LogLevel level,
                 const Pieces&... pieces) noexcept {
    withoutFailing([&] {
        auto record = logger.openRecord(level);
        if (!record) return;
        boost::log::record_ostream out(record);
        out.stream().imbue(std::locale::classic());  // numbers without the host locale's digit groups
        (detail::insertPiece(out.stream(), pieces), ...);
        if (out.stream().bad()) return;
        out.detach_from_record();
        logger.pushRecord(std::move(record));
    });
}

/// Writes one record made of `pieces` when its level is enabled. Costs one test of the mask when it isn't:
/// pieces are formatted, and those that are functions called, only for records that are written.
template <class... Pieces>
void logRecord(foundation::log::diagnostic_logger& logger, LogLevel level, const Pieces&... pieces) noexcept {
    if (logger.levelEnabled(level)) writeRecord(logger, level, pieces...);
}

}  // namespace storage::s3provider
