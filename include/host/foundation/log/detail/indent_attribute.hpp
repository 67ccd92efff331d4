#pragma once

#include <boost/log/attributes/attribute.hpp>

namespace foundation::log::detail {

/// How deep the calling thread is in traced calls, as a Boost.Log attribute with `int` values.
///
/// Every thread has a depth of its own, starting at 0, so calls interleaved on several threads don't
/// disturb each other's indentation. Copies share their depths, as copies of any Boost.Log attribute do.
/// All members may be called from any thread. A thread undoes its increases before it ends: the system may
/// give a later thread the same id.
class indent_attribute : public boost::log::attribute {
public:
    indent_attribute();

    /// One step deeper for the calling thread.
    void increase();

    /// One step back for the calling thread; at depth 0 it does nothing.
    void decrease();

    /// The calling thread's depth, never below 0.
    int depth() const;

private:
    class depths;

    depths& shared() const;
};

}  // namespace foundation::log::detail
