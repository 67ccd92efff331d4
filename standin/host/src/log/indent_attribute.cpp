#include "foundation/log/detail/indent_attribute.hpp"

#include <boost/log/attributes/attribute_value_impl.hpp>

#include <mutex>
#include <thread>
#include <unordered_map>

namespace foundation::log::detail {

// The depths by thread; a thread at depth 0 has no entry. A map and not thread-local storage, because
// loggers of static lifetime are used until after the main thread's storage is gone.
class indent_attribute::depths : public boost::log::attribute::impl {
public:
    boost::log::attribute_value get_value() override {
        return boost::log::attributes::make_attribute_value(current());
    }

    int current() const {
        const std::lock_guard lock(mutex_);
        const auto found = byThread_.find(std::this_thread::get_id());
        return found == byThread_.end() ? 0 : found->second;
    }

    void increase() {
        const std::lock_guard lock(mutex_);
        ++byThread_[std::this_thread::get_id()];
    }

    void decrease() {
        const std::lock_guard lock(mutex_);
        const auto found = byThread_.find(std::this_thread::get_id());
        if (found != byThread_.end() && --found->second == 0) byThread_.erase(found);
    }

private:
    mutable std::mutex mutex_;
    std::unordered_map<std::thread::id, int> byThread_;
};

indent_attribute::indent_attribute() : boost::log::attribute(new depths) {}

indent_attribute::depths& indent_attribute::shared() const {
    return static_cast<depths&>(*get_impl());
}

void indent_attribute::increase() {
    shared().increase();
}

void indent_attribute::decrease() {
    shared().decrease();
}

int indent_attribute::depth() const {
    return shared().current();
}

}  // namespace foundation::log::detail
