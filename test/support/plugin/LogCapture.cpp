#include "support/plugin/LogCapture.hpp"

#include <foundation/log/diagnostic_logger.hpp>

#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/unlocked_frontend.hpp>
#include <boost/make_shared.hpp>

#include <algorithm>
#include <iomanip>
#include <mutex>
#include <ostream>
#include <utility>

namespace testsupport {

namespace {

template <class Value>
Value attributeOf(const boost::log::record_view& record, const char* name) {
    return boost::log::extract_or_default<Value>(name, record, Value());
}

LoggedRecord loggedRecord(const boost::log::record_view& record) {
    return {attributeOf<int>(record, "Severity"), attributeOf<int>(record, "Indent"),
            attributeOf<std::string>(record, "Message"), attributeOf<std::string>(record, "Channel")};
}

// Shared with records in flight, which may arrive after the capture is gone.
class RecordStore : public boost::log::sinks::basic_sink_backend<boost::log::sinks::concurrent_feeding> {
public:
    void consume(const boost::log::record_view& record) {
        const std::lock_guard lock(mutex_);
        records_.push_back(loggedRecord(record));
    }

    std::vector<LoggedRecord> records() const {
        const std::lock_guard lock(mutex_);
        return records_;
    }

    void clear() {
        const std::lock_guard lock(mutex_);
        records_.clear();
    }

private:
    mutable std::mutex mutex_;
    std::vector<LoggedRecord> records_;
};

using Sink = boost::log::sinks::unlocked_sink<RecordStore>;

auto comesFrom(std::vector<std::string> channels) {
    return [channels = std::move(channels)](const boost::log::attribute_value_set& values) {
        const auto channel = boost::log::extract_or_default<std::string>("Channel", values, std::string());
        return std::find(channels.begin(), channels.end(), channel) != channels.end();
    };
}

}  // namespace

class LogCapture::Listener {
public:
    Listener(const std::vector<std::string>& channels, unsigned levels)
        : store_(boost::make_shared<RecordStore>()), sink_(boost::make_shared<Sink>(store_)) {
        sink_->set_filter(comesFrom(channels));
        boost::log::core::get()->add_sink(sink_);
        for (const std::string& channel : channels) {
            masksBefore_.emplace_back(channel, foundation::log::enabledLevels(channel));
            foundation::log::setEnabledLevels(channel, levels);
        }
    }

    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    ~Listener() {
        // Backwards, for a channel that was named twice.
        for (auto before = masksBefore_.rbegin(); before != masksBefore_.rend(); ++before)
            foundation::log::setEnabledLevels(before->first, before->second);
        boost::log::core::get()->remove_sink(sink_);
    }

    RecordStore& store() const { return *store_; }

private:
    boost::shared_ptr<RecordStore> store_;
    boost::shared_ptr<Sink> sink_;
    std::vector<std::pair<std::string, unsigned>> masksBefore_;
};

LogCapture::LogCapture(const std::string& channel, unsigned levels)
    : listener_(std::make_unique<Listener>(std::vector{channel}, levels)) {}

LogCapture::LogCapture(std::initializer_list<std::string> channels, unsigned levels)
    : listener_(std::make_unique<Listener>(std::vector(channels), levels)) {}

LogCapture::~LogCapture() = default;

std::vector<LoggedRecord> LogCapture::records() const {
    return listener_->store().records();
}

std::vector<std::string> LogCapture::texts() const {
    std::vector<std::string> texts;
    for (auto& record : records())
        texts.push_back(std::move(record.text));
    return texts;
}

std::vector<std::string> LogCapture::texts(unsigned level) const {
    std::vector<std::string> texts;
    for (auto& record : records())
        if (record.level == static_cast<int>(level)) texts.push_back(std::move(record.text));
    return texts;
}

void LogCapture::clear() {
    listener_->store().clear();
}

bool operator==(const LoggedRecord& a, const LoggedRecord& b) {
    return a.level == b.level && a.indent == b.indent && a.text == b.text && a.channel == b.channel;
}

bool operator!=(const LoggedRecord& a, const LoggedRecord& b) {
    return !(a == b);
}

std::ostream& operator<<(std::ostream& out, const LoggedRecord& record) {
    return out << "[level " << record.level << ", indent " << record.indent << ", channel "
               << std::quoted(record.channel) << "] " << std::quoted(record.text);
}

}  // namespace testsupport
