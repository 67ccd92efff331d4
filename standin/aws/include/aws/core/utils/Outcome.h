#pragma once

#include <type_traits>
#include <utility>

namespace Aws::Utils {

/// The result of a request or the error that took its place. A default-constructed outcome is a failure
/// with a default-constructed error.
template <typename R, typename E>
class Outcome {
public:
    Outcome() = default;
    Outcome(const R& result) : result_(result), success_(true) {}  // NOLINT(google-explicit-constructor)
    Outcome(R&& result)
        : result_(std::move(result)), success_(true) {}  // NOLINT(google-explicit-constructor)
    Outcome(const E& error) : error_(error) {}           // NOLINT(google-explicit-constructor)
    Outcome(E&& error) : error_(std::move(error)) {}     // NOLINT(google-explicit-constructor)

    /// From an outcome whose result and error convert to these.
    template <
        typename OtherR, typename OtherE,
        typename = std::enable_if_t<std::is_convertible_v<OtherR, R> && std::is_convertible_v<OtherE, E> &&
                                    !(std::is_same_v<OtherR, R> && std::is_same_v<OtherE, E>)>>
    Outcome(Outcome<OtherR, OtherE>&& other)  // NOLINT(google-explicit-constructor)
        : result_(std::move(other.result_)), error_(std::move(other.error_)), success_(other.success_) {}

    bool IsSuccess() const { return success_; }

    const R& GetResult() const { return result_; }
    R& GetResult() { return result_; }
    /// For moving the result out; the outcome keeps a moved-from one.
    R&& GetResultWithOwnership() { return std::move(result_); }

    const E& GetError() const { return error_; }
    /// The error as another error type that can be made from it.
    template <typename T>
    T GetError() const {
        return T(error_);
    }

    /// Attempts made beyond the first.
    unsigned int GetRetryCount() const { return retryCount_; }
    void SetRetryCount(unsigned int count) { retryCount_ = count; }

private:
    template <typename OtherR, typename OtherE>
    friend class Outcome;

    R result_{};
    E error_{};
    bool success_ = false;
    unsigned int retryCount_ = 0;
};

}  // namespace Aws::Utils
