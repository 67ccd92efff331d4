#pragma once

#include <string>
#include <utility>

namespace foundation::storage::provider {

/// The identifier of an error, such as u"no_such_key": the stable part of an error, on which callers may
/// decide.
class ExceptionContext {
public:
    explicit ExceptionContext(std::u16string text) : m_text(std::move(text)) {}

    const std::u16string& text() const { return m_text; }

    friend bool operator==(const ExceptionContext& a, const ExceptionContext& b) {
        return a.m_text == b.m_text;
    }
    friend bool operator!=(const ExceptionContext& a, const ExceptionContext& b) { return !(a == b); }

private:
    std::u16string m_text;
};

}  // namespace foundation::storage::provider
