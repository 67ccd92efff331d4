#pragma once

#include <iosfwd>
#include <memory>

namespace foundation::log {

/// The mask of all levels.
constexpr unsigned allLevels = 0x7FFF;

/// The connection between the logging core and a stream; it ends when this object does. From then on the
/// stream is not touched again, not even by a record that another thread is just pushing.
class [[nodiscard]] StreamSink {
public:
    StreamSink(std::shared_ptr<std::ostream> stream, unsigned levels);
    StreamSink(StreamSink&&) noexcept;
    StreamSink& operator=(StreamSink&&) noexcept;
    ~StreamSink();

private:
    class Attachment;

    std::unique_ptr<Attachment> attachment_;
};

/// Writes every record of every channel whose level is one of `levels` to the stream, one line a record,
/// flushed at once:
///
///     2024-05-01T12:34:56.123456Z storage::s3provider::S3Client    2    m_bucket=data key=logs/a
///
/// That is the time in UTC, the channel, the level right-aligned to four columns, one blank, two blanks for
/// each step of indentation, the message. Control characters and line ends in the message are shown as
/// escape sequences (`\n`, `\x1B`, `\u2028`), bytes that are not UTF-8 as `\xFF`, a backslash as `\\`.
///
/// Records may come from any thread; lines never mix. A failing stream never disturbs the thread that
/// logs. Throws std::invalid_argument for a null stream. The stream passed by reference must outlive the
/// returned object.
StreamSink addStreamSink(std::ostream& stream, unsigned levels = allLevels);
StreamSink addStreamSink(std::shared_ptr<std::ostream> stream, unsigned levels = allLevels);

}  // namespace foundation::log
