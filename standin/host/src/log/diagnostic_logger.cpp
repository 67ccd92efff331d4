#include "foundation/log/diagnostic_logger.hpp"

#include "log/EnabledLevels.hpp"

#include <boost/log/attributes/clock.hpp>
#include <boost/log/attributes/constant.hpp>
#include <boost/log/attributes/function.hpp>

#include <utility>

namespace foundation::log {

namespace attributes = boost::log::attributes;

template <typename CharT>
basic_diagnostic_logger<CharT>::basic_diagnostic_logger(const std::string& channel)
    : channel_(channel), core_(boost::log::core::get()), enabledLevels_(enabledLevelsOf(channel)) {
    attributes_["Channel"] = attributes::make_constant(channel);
    // Read once, while the record is opened. The severity of Boost.Log's own loggers is read when the record
    // is pushed, and would be that of another record which the thread wrote in between.
    attributes_["Severity"] = attributes::make_function([this] { return openingLevel_; });
    attributes_["Indent"] = indent_;
    attributes_["TimeStamp"] = attributes::utc_clock();
}

template <typename CharT>
boost::log::record basic_diagnostic_logger<CharT>::openRecord(unsigned level) {
    const std::lock_guard lock(mutex_);
    openingLevel_ = static_cast<int>(level);
    return core_->open_record(attributes_);
}

template <typename CharT>
void basic_diagnostic_logger<CharT>::pushRecord(boost::log::record&& record) {
    if (record) core_->push_record(std::move(record));
}

template class basic_diagnostic_logger<char>;

}  // namespace foundation::log
