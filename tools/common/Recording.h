// A recording as both tools make it: a source (LiveSource) read into a document (VyrLiveTable),
// one experiment per table the source gives ("log 2026-04-01 10:00:00"; a followed file read
// again from its start gives another), and the reasons it stops: the end of the source, a number
// of rows, a duration, a silence. The caller drives it with Step (the command line in a loop,
// the viewer from a timer) and saves when it likes.
#ifndef VYR_TOOLS_COMMON_RECORDING_H
#define VYR_TOOLS_COMMON_RECORDING_H

#include <chrono>
#include <memory>
#include <string>

#include <wx/string.h>

#include "LiveSource.h"
#include "vyrbase/file/VyrLiveTable.h"
#include "vyrbase/file/VyrTableImport.h"

class VyrBaseData;
class VyrExperience;

namespace vyrtools {

class Recording {
public:
    typedef std::chrono::steady_clock Clock;

    // When it stops besides the end of the source; 0 for none.
    struct Limits {
        size_t rows = 0;
        double seconds = 0.0;
        double idle = 0.0;  // seconds without a new row (counted from the start before one)
    };
    enum State {
        kRecording,
        kEnded,   // the source ended or a limit was reached (EndReason says which)
        kFailed,  // the source could not be read, or its bytes are no table (Reason says why)
    };

    // Rows go into `doc` read with the settings of `settings`.
    Recording(VyrBaseData& doc, const VyrTableImport& settings, const Limits& limits);

    // Opens the source ("-", a file, a named pipe, a serial device at `baud`). False with a
    // reason a person can act on.
    bool Open(const wxString& source, int baud, wxString& reason);
    // Reads what comes within `waitMs` milliseconds (less when a limit falls earlier) into the
    // document; answers the state after it.
    State Step(int waitMs);

    // Reads, without waiting, what the source already holds (a pipe's bytes written before a
    // signal stopped the recording), so that no row sent is lost. A followed file's line not
    // yet ended stays unread.
    void Drain();

    State GetState() const { return m_eState; }
    // Why it failed ("not a table: binary data", "cannot read: ...").
    const wxString& GetReason() const { return m_sReason; }
    // Why it ended ("end of input", "--rows reached", "--seconds reached", "--idle reached").
    const char* GetEndReason() const { return m_pEndReason; }
    // Whether it failed because the source could not be read (rather than its bytes).
    bool IsSourceFailure() const { return m_bSourceFailed; }
    size_t GetRowCount() const { return m_live.GetRowCount(); }
    // Bytes read from the source so far.
    unsigned long long GetBytesRead() const { return m_iBytesRead; }
    // The experiment the rows go into now; null before its first row.
    VyrExperience* GetExperience() const { return m_live.GetExperience(); }
    size_t GetSkippedCount() const { return m_live.GetSkippedCount(); }
    // Seconds since Open.
    double GetElapsed() const;
    const LiveSource& GetSource() const { return m_source; }

    // The name the experiments are named after: the file name without extension, "stdin".
    static wxString SourceName(const wxString& source);

private:
    void StartTable();
    bool LimitReached(Clock::time_point now);
    State Fail(const wxString& reason);

    VyrLiveTable m_live;
    Limits m_limits;
    LiveSource m_source;
    wxString m_sName;
    State m_eState = kRecording;
    wxString m_sReason;
    bool m_bSourceFailed = false;
    const char* m_pEndReason = "";
    Clock::time_point m_start;
    Clock::time_point m_lastRow;
    std::string m_bytes;
    unsigned long long m_iBytesRead = 0;
};

}  // namespace vyrtools

#endif
