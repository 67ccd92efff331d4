#include "foundation/log/stream_sink.hpp"

#include "log/RecordFormat.hpp"

#include <boost/core/null_deleter.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_ostream_backend.hpp>
#include <boost/log/utility/exception_handler.hpp>
#include <boost/make_shared.hpp>

#include <locale>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace foundation::log {

namespace sinks = boost::log::sinks;

namespace {

// Boost.Log takes its own kind of pointer; this one keeps the given one.
boost::shared_ptr<std::ostream> boostPointer(std::shared_ptr<std::ostream> stream) {
    std::ostream* const raw = stream.get();
    return {raw, [owner = std::move(stream)](std::ostream*) {}};
}

auto isOneOf(unsigned levels) {
    return [levels](const boost::log::attribute_value_set& attributes) {
        const auto level = boost::log::extract<int>("Severity", attributes);
        return level && (static_cast<unsigned>(*level) & levels) != 0;
    };
}

}  // namespace

class StreamSink::Attachment {
public:
    Attachment(std::shared_ptr<std::ostream> stream, unsigned levels)
        : stream_(boostPointer(std::move(stream))),
          sink_(boost::make_shared<sinks::synchronous_sink<sinks::text_ostream_backend>>()) {
        sink_->locked_backend()->add_stream(stream_);
        sink_->locked_backend()->auto_flush(true);
        if (levels != allLevels) sink_->set_filter(isOneOf(levels));
        sink_->set_formatter(lineFormat());
        sink_->imbue(std::locale::classic());  // levels without the process's digit groups
        sink_->set_exception_handler(boost::log::make_exception_suppressor());
        boost::log::core::get()->add_sink(sink_);
    }

    Attachment(const Attachment&) = delete;
    Attachment& operator=(const Attachment&) = delete;

    ~Attachment() {
        boost::log::core::get()->remove_sink(sink_);
        // A record opened before still reaches the sink: it must not find the stream.
        sink_->locked_backend()->remove_stream(stream_);
    }

private:
    boost::shared_ptr<std::ostream> stream_;
    boost::shared_ptr<sinks::synchronous_sink<sinks::text_ostream_backend>> sink_;
};

StreamSink::StreamSink(std::shared_ptr<std::ostream> stream, unsigned levels) {
    if (!stream) throw std::invalid_argument("a log sink needs a stream");
    attachment_ = std::make_unique<Attachment>(std::move(stream), levels);
}

StreamSink::StreamSink(StreamSink&&) noexcept = default;
StreamSink& StreamSink::operator=(StreamSink&&) noexcept = default;
StreamSink::~StreamSink() = default;

StreamSink addStreamSink(std::ostream& stream, unsigned levels) {
    return StreamSink(std::shared_ptr<std::ostream>(&stream, boost::null_deleter()), levels);
}

StreamSink addStreamSink(std::shared_ptr<std::ostream> stream, unsigned levels) {
    return StreamSink(std::move(stream), levels);
}

}  // namespace foundation::log
