#pragma once

#include "bundles/Greeter.hpp"

#include <cppmicroservices/BundleContext.h>

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// Where the objects of a component write down what becomes of them. Any thread.
class Journal {
public:
    void note(const std::string& event) {
        const std::lock_guard lock(mutex_);
        events_.push_back(event);
    }

    std::vector<std::string> events() const {
        const std::lock_guard lock(mutex_);
        return events_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> events_;
};

class KnownPhrase final : public Phrase {
public:
    KnownPhrase(std::string text, std::shared_ptr<Journal> journal)
        : text_(std::move(text)), journal_(std::move(journal)) {}

    std::string text() const override { return text_; }
    void note(const std::string& event) override { journal_->note(event); }

private:
    std::string text_;
    std::shared_ptr<Journal> journal_;
};

inline auto registerPhrase(cppmicroservices::BundleContext context, const std::string& text,
                           std::shared_ptr<Journal> journal = std::make_shared<Journal>(),
                           const std::string& language = "en") {
    return context.RegisterService<Phrase>(std::make_shared<KnownPhrase>(text, std::move(journal)),
                                           {{"language", language}});
}

/// The greeter's words; "nobody" when there is no greeter, "broken" when there is none behind its service.
inline std::string greeting(cppmicroservices::BundleContext context) {
    const auto reference = context.GetServiceReference<Greeter>();
    if (!reference) return "nobody";
    const auto greeter = context.GetService(reference);
    return greeter ? greeter->greet() : "broken";
}

}  // namespace test
