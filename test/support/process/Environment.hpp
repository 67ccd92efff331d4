#pragma once

#include <cerrno>
#include <cstdlib>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace testsupport {

/// An endpoint for AWS_EC2_METADATA_SERVICE_ENDPOINT where nobody can listen. AWS_EC2_METADATA_DISABLED alone
/// stops the SDK from asking for the machine's region, but not for its credentials.
constexpr const char* noMetadataService = "http://127.0.0.1:0";

/// Changes environment variables while it lives and then puts every one it changed back. Nested ones end in
/// reverse order. Not for use while another thread reads the environment.
class Environment {
public:
    using Value = std::optional<std::string>;  ///< empty: not set

    Environment() = default;

    /// Environment environment{{"AWS_REGION", "eu-west-1"}, {"AWS_PROFILE", std::nullopt}};
    Environment(std::initializer_list<std::pair<const char*, Value>> variables) {
        try {
            for (const auto& [name, value] : variables)
                change(name, value);
        } catch (...) {
            restore();
            throw;
        }
    }

    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    ~Environment() { restore(); }

    void set(const std::string& name, const std::string& value) { change(name, value); }
    void unset(const std::string& name) { change(name, std::nullopt); }

private:
    void change(const std::string& name, const Value& value) {
        Value before = read(name);
        if (!write(name, value))
            throw std::system_error(errno, std::generic_category(), "environment variable '" + name + "'");
        before_.try_emplace(name, std::move(before));
    }

    void restore() noexcept {
        for (const auto& [name, value] : before_)
            write(name, value);
    }

    // NOLINTBEGIN(concurrency-mt-unsafe): by contract no other thread looks
    static Value read(const std::string& name) {
        const char* const value = std::getenv(name.c_str());
        return value ? Value(value) : std::nullopt;
    }

    static bool write(const std::string& name, const Value& value) noexcept {
        return (value ? ::setenv(name.c_str(), value->c_str(), 1) : ::unsetenv(name.c_str())) == 0;
    }
    // NOLINTEND(concurrency-mt-unsafe)

    std::map<std::string, Value> before_;  // what each changed variable was at first
};

}  // namespace testsupport
