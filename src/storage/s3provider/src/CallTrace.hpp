#pragma once

#include <boost/current_function.hpp>
#include <exception>
#include <foundation/log/diagnostic_logger.hpp>

#include "DiagnosticRecord.hpp"

namespace storage::s3provider {

/// Where a call is traced: its signature, and the place in the source for whoever debugs it.
struct CallSite {
    const char* signature;  ///< as the compiler spells it; static storage
    const char* file;
    int line;
};

/// The enclosing function as a CallSite.
#define S3PROVIDER_CALL_SITE                       \
    ::storage::s3provider::CallSite {              \
        BOOST_CURRENT_FUNCTION, __FILE__, __LINE__ \
    }

/// Frames a call in the log: an entry record, one step of indentation, an exit record that says whether the
/// call was left by an exception. Lives on the stack of the traced call; used by that thread only.
///
/// Whether a call is traced is decided at its entry, so the two records always come in pairs even when the
/// enabled levels change in between.
class CallTrace {
public:
    CallTrace(foundation::log::diagnostic_logger& logger, const CallSite& site) noexcept
        : m_logger(logger), m_site(site), m_active(logger.levelEnabled(LogCallEntry)) {
        if (!m_active) return;
        m_exceptionsAtEntry = std::uncaught_exceptions();
        writeRecord(m_logger, LogCallEntry, m_site.signature);
        m_indented = withoutFailing([&] { m_logger.indent().increase(); });
    }

    ~CallTrace() {
        if (!m_active) return;
        if (m_indented) withoutFailing([&] { m_logger.indent().decrease(); });
        const bool thrown = std::uncaught_exceptions() > m_exceptionsAtEntry;
        writeRecord(m_logger, LogCallExit, m_site.signature, thrown ? " [throw]" : "");
    }

    CallTrace(const CallTrace&) = delete;
    CallTrace& operator=(const CallTrace&) = delete;

    bool active() const noexcept { return m_active; }

private:
    foundation::log::diagnostic_logger& m_logger;
    CallSite m_site;
    bool m_active;
    bool m_indented = false;
    int m_exceptionsAtEntry = 0;
};

/// Traces the value a call is about to return, framed like a call of its own.
template <class Value>
void traceResult(foundation::log::diagnostic_logger& logger, const CallSite& site, const char* name,
                 const Value& value) noexcept {
    const CallTrace trace(logger, site);
    if (trace.active()) writeRecord(logger, LogResultValue, name, "=", value);
}

}  // namespace storage::s3provider
