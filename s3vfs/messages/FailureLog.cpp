#include "messages/FailureLog.hpp"

#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/expressions/message.hpp>
#include <boost/log/sinks/sink.hpp>
#include <boost/smart_ptr/make_shared.hpp>
#include <mutex>

namespace s3vfs {

class FailureLog::Sink : public boost::log::sinks::sink {
public:
    Sink() : sink(false) {}

    bool will_consume(const boost::log::attribute_value_set& attributes) override {
        const auto level = boost::log::extract<int>("Severity", attributes);
        return level && *level == static_cast<int>(failedRequestLevel);
    }

    void consume(const boost::log::record_view& record) override {
        const auto text = record[boost::log::expressions::smessage];
        const std::lock_guard lock(mutex_);
        latest_ = text ? *text : std::string();
    }

    void flush() override {}

    std::string latest() const {
        const std::lock_guard lock(mutex_);
        return latest_;
    }

private:
    mutable std::mutex mutex_;
    std::string latest_;
};

FailureLog::FailureLog() : sink_(boost::make_shared<Sink>()) {
    boost::log::core::get()->add_sink(sink_);
}

FailureLog::~FailureLog() {
    boost::log::core::get()->remove_sink(sink_);
}

std::string FailureLog::latest() const {
    return sink_->latest();
}

}  // namespace s3vfs
