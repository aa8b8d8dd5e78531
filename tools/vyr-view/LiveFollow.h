// vyr-view --follow SOURCE: a recording shown as it arrives. The rows are read by the same
// recording as vyr record's (tools/common/Recording) from a timer on the window's own thread, as
// the library wants (it is single-threaded): each tick reads what the source holds, no more than
// 1 MiB, and the library announces it once per curve, so that the diagram repaints at most once
// a tick, 30 times a second however fast rows come, and the mouse, menus and side panel are
// served between two ticks. The diagram follows the newest data: its automatic scale grows with
// them, or with --window S it shows the last S seconds (a zoom the user makes, or a pan, takes
// over until a double click restores the whole diagram). File > Save saves what was recorded so
// far; the recording goes on.
#ifndef VYR_VIEW_LIVEFOLLOW_H
#define VYR_VIEW_LIVEFOLLOW_H

#include <wx/string.h>
#include <wx/timer.h>

#include "Recording.h"
#include "vyrbase/data/VyrScale.h"
#include "vyrbase/file/VyrTableImport.h"

class ViewerDocument;
class VyrExperience;
class wxCmdLineParser;
class wxDocManager;
class wxPaintEvent;

class LiveFollow : public wxEvtHandler {
public:
    // The repaint period: 30 ticks a second at most.
    static const int kTickMs = 33;

    struct Options {
        bool wanted = false;
        wxString source;
        int baud = vyrtools::LiveSource::kDefaultBaud;
        VyrTableImport settings;
        vyrtools::Recording::Limits limits;
        double window = 0.0;  // seconds of X shown; 0 for the whole recording
    };

    // --follow SOURCE and the options of vyr record (--separator... --baud) and --window S.
    static void AddOptions(wxCmdLineParser& parser);
    // False, with the message for the user, for a value an option does not take.
    static bool ReadOptions(wxCmdLineParser& parser, Options& options, wxString& error);
    // Opens the source into a new document of `manager`, shown in its window, and starts
    // following it. False, with the reason, when the source cannot be opened.
    static bool Begin(wxDocManager* manager, const Options& options, wxString& reason);

    LiveFollow(ViewerDocument& document, const Options& options);
    ~LiveFollow() override;

    size_t GetRowCount() const { return m_recording.GetRowCount(); }
    vyrtools::Recording::State GetState() const { return m_recording.GetState(); }
    // The state report of the script driver: follow-rows, follow-skipped, follow-state,
    // follow-paints (repaints of diagram 0 since the start), follow-seconds, follow-window.
    void PrintState() const;

private:
    bool Open(wxString& reason);
    void OnTimer(wxTimerEvent& event);
    void OnPaint(wxPaintEvent& event);
    // Shows the curves of a new experiment in the diagram (the library shows a new curve only
    // when the application asks).
    void ShowNewCurves();
    void ApplyWindow();
    void ReportEnd();

    ViewerDocument& m_document;
    Options m_options;
    vyrtools::Recording m_recording;
    wxTimer m_timer;
    VyrExperience* m_shown = nullptr;
    size_t m_rowsSeen = 0;
    int m_paints = 0;
    // The zoom the window last set, to tell the user's own zoom or pan from it.
    bool m_windowSet = false;
    bool m_userZoom = false;
    VyrScale m_lastWindow;
};

#endif
