#include "log/RecordFormat.hpp"

#include "log/Escape.hpp"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/expressions/formatters/wrap_formatter.hpp>
#include <boost/log/support/date_time.hpp>

#include <cstddef>
#include <iomanip>

namespace foundation::log {

namespace {

void writeIndentedMessage(const boost::log::record_view& record, boost::log::formatting_ostream& out) {
    const int indent = boost::log::extract_or_default<int>("Indent", record, 0);
    const auto message = boost::log::extract_or_default<std::string>("Message", record, std::string());
    out << std::string(2 * static_cast<std::size_t>(indent), ' ') << escaped(message);
}

}  // namespace

boost::log::formatter lineFormat() {
    namespace expr = boost::log::expressions;
    return expr::stream << expr::format_date_time<boost::posix_time::ptime>("TimeStamp",
                                                                            "%Y-%m-%dT%H:%M:%S.%fZ")
                        << ' ' << expr::attr<std::string>("Channel") << ' ' << std::setw(4)
                        << expr::attr<int>("Severity") << ' ' << expr::wrap_formatter(&writeIndentedMessage);
}

}  // namespace foundation::log
