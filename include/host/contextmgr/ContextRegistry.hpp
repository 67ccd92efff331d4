#pragma once

namespace contextmgr {

/// Identifies a runtime context: what one user does in one project.
class KvrID {
public:
    constexpr KvrID() = default;
    constexpr explicit KvrID(unsigned number) : number_(number) {}

    friend constexpr bool operator==(const KvrID& a, const KvrID& b) { return a.number_ == b.number_; }
    friend constexpr bool operator!=(const KvrID& a, const KvrID& b) { return !(a == b); }

private:
    unsigned number_ = 0;
};

class ContextRegistry {
public:
    /// The identifier of the current runtime context; outside of the host's application there is one only.
    /// Any thread.
    static KvrID getKvrID();
};

}  // namespace contextmgr
