// A recording: the source's bytes into the live table, and the reasons to stop.
#include "Recording.h"

#include <algorithm>
#include <cmath>

#include <wx/datetime.h>
#include <wx/filename.h>

#include "TableImporting.h"

namespace vyrtools {

Recording::Recording(VyrBaseData& doc, const VyrTableImport& settings, const Limits& limits)
    : m_live(doc, settings), m_limits(limits) {
    m_live.SetRowLimit(limits.rows);
}

wxString Recording::SourceName(const wxString& source) {
    if (source == "-")
        return "stdin";
    const wxString name = wxFileName(source).GetName();
    return name.empty() ? wxString("recording") : name;
}

bool Recording::Open(const wxString& source, int baud, wxString& reason) {
    if (!m_source.Open(source, baud, reason))
        return false;
    m_sName = SourceName(source);
    m_start = m_lastRow = Clock::now();
    StartTable();
    return true;
}

void Recording::StartTable() {
    m_live.Start(m_sName + " " + wxDateTime::Now().Format("%Y-%m-%d %H:%M:%S"));
}

double Recording::GetElapsed() const {
    return std::chrono::duration<double>(Clock::now() - m_start).count();
}

bool Recording::LimitReached(Clock::time_point now) {
    const double total = std::chrono::duration<double>(now - m_start).count();
    const double quiet = std::chrono::duration<double>(now - m_lastRow).count();
    if (m_limits.seconds > 0 && total >= m_limits.seconds)
        m_pEndReason = "--seconds reached";
    else if (m_limits.idle > 0 && quiet >= m_limits.idle)
        m_pEndReason = "--idle reached";
    else
        return false;
    m_eState = kEnded;
    return true;
}

Recording::State Recording::Fail(const wxString& reason) {
    m_sReason = reason;
    m_eState = kFailed;
    return m_eState;
}

void Recording::Drain() {
    // Bounded, in case the writer keeps writing as fast as it is read.
    for (int round = 0; round < 64 && m_eState == kRecording; ++round) {
        const size_t seen = m_live.GetRowCount() + m_live.GetSkippedCount();
        Step(0);
        if (m_live.GetRowCount() + m_live.GetSkippedCount() == seen && m_bytes.empty())
            break;
    }
}

Recording::State Recording::Step(int waitMs) {
    if (m_eState != kRecording)
        return m_eState;
    Clock::time_point now = Clock::now();
    if (LimitReached(now))
        return m_eState;
    // Never wait past a limit.
    double wait = std::max(waitMs, 0) / 1000.0;
    if (m_limits.seconds > 0)
        wait =
            std::min(wait, m_limits.seconds - std::chrono::duration<double>(now - m_start).count());
    if (m_limits.idle > 0)
        wait =
            std::min(wait, m_limits.idle - std::chrono::duration<double>(now - m_lastRow).count());
    const int waitFor = static_cast<int>(std::ceil(std::max(wait, 0.0) * 1000.0));

    m_bytes.clear();
    const LiveSource::Event event = m_source.Read(waitFor, m_bytes);
    m_iBytesRead += m_bytes.size();
    const size_t before = m_live.GetRowCount();
    switch (event) {
        case LiveSource::kBytes:
            m_live.Feed(m_bytes.data(), m_bytes.size());
            break;
        case LiveSource::kAgain:
            // The file was read again from its start: what it holds now is a new table.
            StartTable();
            break;
        case LiveSource::kEnd:
            m_live.Finish();
            if (m_live.GetError() == VyrTableImport::kErrorNone || m_live.GetRowCount() > 0) {
                m_pEndReason = "end of input";
                m_eState = kEnded;
            }
            break;
        case LiveSource::kFailed:
            m_bSourceFailed = true;
            return Fail(m_source.GetReason());
        case LiveSource::kNothing:
            break;
    }
    now = Clock::now();
    if (m_live.GetRowCount() > before)
        m_lastRow = now;
    if (m_eState == kEnded)
        return m_eState;
    if (m_live.GetError() != VyrTableImport::kErrorNone)
        return Fail(TableRefusal(m_live.GetError()));
    if (m_live.IsFull()) {
        m_pEndReason = "--rows reached";
        m_eState = kEnded;
        return m_eState;
    }
    LimitReached(now);
    return m_eState;
}

}  // namespace vyrtools
