#pragma once

#include <initializer_list>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace testsupport {

/// @{ The plug-in's channels of the diagnostic log.
constexpr const char* clientChannel = "storage::s3provider::S3Client";
constexpr const char* factoryChannel = "storage::s3provider::AwsS3ClientFactory";
/// @}

/// One diagnostic record as a test sees it.
struct LoggedRecord {
    int level = 0;
    int indent = 0;
    std::string text;
    std::string channel;
};

bool operator==(const LoggedRecord& a, const LoggedRecord& b);
bool operator!=(const LoggedRecord& a, const LoggedRecord& b);

/// `[level 2, indent 1, channel "c"] "text"`
std::ostream& operator<<(std::ostream& out, const LoggedRecord& record);

/// Listens to some channels of the diagnostic log while it lives: enables the levels, keeps the records in
/// the order they were pushed, and puts the masks back at its end. Records may come from any thread; a
/// capture is made and destroyed by one. Captures of one channel nest: the inner one's levels are then those
/// of the outer one, too.
class LogCapture {
public:
    static constexpr unsigned allLevels = 0x7FFF;

    explicit LogCapture(const std::string& channel, unsigned levels = allLevels);
    LogCapture(std::initializer_list<std::string> channels, unsigned levels = allLevels);
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture();

    std::vector<LoggedRecord> records() const;

    /// The records' texts alone.
    std::vector<std::string> texts() const;

    /// Those of the records of one level.
    std::vector<std::string> texts(unsigned level) const;

    /// Forgets what was captured so far.
    void clear();

private:
    class Listener;

    std::unique_ptr<Listener> listener_;
};

}  // namespace testsupport
