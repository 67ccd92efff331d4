#pragma once

#include "foundation/log/detail/indent_attribute.hpp"

#include <boost/log/attributes/attribute_set.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/core/record.hpp>

#include <atomic>
#include <mutex>
#include <string>

namespace foundation::log {

/// Sets which levels the channel's loggers write: a mask of level bits, 0 (the default) for none. It may
/// be called before the channel has a logger, and from any thread; other threads notice soon, not at once.
void setEnabledLevels(const std::string& channel, unsigned mask);

/// The mask last set for the channel, 0 when none was. Any thread.
unsigned enabledLevels(const std::string& channel);

/// A source of diagnostic records on one channel, over Boost.Log.
///
/// A record is opened with its level, filled through a Boost.Log record stream and pushed:
///
///     if (logger.levelEnabled(2)) {
///         boost::log::record record = logger.openRecord(2);
///         if (record) {
///             boost::log::record_ostream(record) << "text" << std::flush;
///             logger.pushRecord(std::move(record));
///         }
///     }
///
/// Records carry the attributes `Channel` (std::string), `Severity` (int, the level), `Indent` (int) and
/// `TimeStamp` (boost::posix_time::ptime, UTC). All members may be called from any thread; an opened record
/// belongs to the thread that opened it. Levels are bits of 0x7FFF.
template <typename CharT>
class basic_diagnostic_logger {
public:
    explicit basic_diagnostic_logger(const std::string& channel);

    basic_diagnostic_logger(const basic_diagnostic_logger&) = delete;
    basic_diagnostic_logger& operator=(const basic_diagnostic_logger&) = delete;

    /// Whether a record of this level would be formed now. The mask comes first: while nothing is enabled,
    /// a record site costs this one load and test.
    bool levelEnabled(unsigned level) const noexcept {
        return (enabledLevels_.load(std::memory_order_relaxed) & level & levelBits) != 0 && coreEnabled();
    }

    /// Whether the logging core accepts records at all, whatever the mask says.
    bool coreEnabled() const noexcept { return core_->get_logging_enabled(); }

    /// Opens a record without consulting the mask; empty when the core is off or no sink wants the record.
    /// The record's indentation is the calling thread's at this moment.
    boost::log::record openRecord(unsigned level);

    /// Hands the record to the sinks. An empty record is ignored.
    void pushRecord(boost::log::record&& record);

    detail::indent_attribute& indent() noexcept { return indent_; }

    const std::string& channel() const noexcept { return channel_; }

private:
    static constexpr unsigned levelBits = 0x7FFF;

    const std::string channel_;
    const boost::log::core_ptr core_;
    const std::atomic<unsigned>& enabledLevels_;  // of the channel, shared by its loggers; never destroyed
    detail::indent_attribute indent_;
    boost::log::attribute_set attributes_;
    std::mutex mutex_;      // held while a record is opened
    int openingLevel_ = 0;  // of the record being opened; guarded by mutex_
};

extern template class basic_diagnostic_logger<char>;

using diagnostic_logger = basic_diagnostic_logger<char>;

}  // namespace foundation::log
