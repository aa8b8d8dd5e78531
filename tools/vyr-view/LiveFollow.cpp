#include "LiveFollow.h"

#include <cstdio>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

#include <wx/cmdline.h>
#include <wx/docview.h>

#include "DiagramCanvas.h"
#include "DiagramView.h"
#include "DocumentFrame.h"
#include "TableOptions.h"
#include "ViewerDocument.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// The options besides those of the table, each a number: its name, whether 0 is allowed, and
// the message for a refused value.
struct NumberOption {
    const char* name;
    const char* help;
    const char* refusal;
};
const NumberOption kNumberOptions[] = {
    {"rows", "stop after N rows", "--rows wants a number of rows above 0"},
    {"seconds", "stop after S seconds", "--seconds wants a duration in seconds above 0"},
    {"idle", "stop after S seconds without a row", "--idle wants a duration in seconds above 0"},
    {"baud", "the serial line's baud rate (115200)",
     "--baud wants a baud rate of a serial line (9600, 115200...)"},
    {"window", "show the last S seconds of X", "--window wants a duration in seconds above 0"},
};

bool ReadPositive(const wxString& text, double& value) {
    return text.ToCDouble(&value) && value > 0 && value < 1e9;
}

bool SameScale(const VyrScale& a, const VyrScale& b) {
    return a.GetXmin() == b.GetXmin() && a.GetXmax() == b.GetXmax() && a.GetYmin() == b.GetYmin() &&
           a.GetYmax() == b.GetYmax();
}

}  // namespace

void LiveFollow::AddOptions(wxCmdLineParser& parser) {
    parser.AddOption("", "follow",
                     "show the rows of SOURCE (-, a file, a pipe, a serial port) live",
                     wxCMD_LINE_VAL_STRING);
    for (const std::string& name : vyrtools::TableOptionNames())
        parser.AddOption("", name.substr(2), "how the table of --follow is read (as vyr import)",
                         wxCMD_LINE_VAL_STRING);
    for (const NumberOption& option : kNumberOptions)
        parser.AddOption("", option.name, option.help, wxCMD_LINE_VAL_STRING);
}

bool LiveFollow::ReadOptions(wxCmdLineParser& parser, Options& options, wxString& error) {
    options.wanted = parser.Found("follow", &options.source);
    std::string refusal;
    if (!vyrtools::ApplyTableOptions(
            [&parser](const std::string& name, std::string& value) {
                wxString text;
                if (!parser.Found(name.substr(2), &text))
                    return false;
                value = text.utf8_str().data();
                return true;
            },
            options.settings, refusal)) {
        error = wxString::FromUTF8(refusal.c_str());
        return false;
    }
    for (const NumberOption& option : kNumberOptions) {
        wxString text;
        if (!parser.Found(option.name, &text))
            continue;
        double value = 0;
        const std::string name = option.name;
        bool ok = ReadPositive(text, value);
        if (name == "rows" || name == "baud")
            ok = ok && value == static_cast<double>(static_cast<long>(value));
        if (name == "baud")
            ok = ok && vyrtools::LiveSource::IsBaudRate(static_cast<int>(value));
        if (!ok) {
            error = option.refusal;
            return false;
        }
        if (name == "rows")
            options.limits.rows = static_cast<size_t>(value);
        else if (name == "seconds")
            options.limits.seconds = value;
        else if (name == "idle")
            options.limits.idle = value;
        else if (name == "baud")
            options.baud = static_cast<int>(value);
        else
            options.window = value;
    }
    return true;
}

bool LiveFollow::Begin(wxDocManager* manager, const Options& options, wxString& reason) {
    // A new lab document, as File > New would make it.
    wxDocTemplate* labTemplate = nullptr;
    for (wxObjectList::compatibility_iterator node = manager->GetTemplates().GetFirst(); node;
         node = node->GetNext()) {
        auto* temple = static_cast<wxDocTemplate*>(node->GetData());
        if (temple->GetDefaultExtension() == "vyr")
            labTemplate = temple;
    }
    if (!labTemplate) {
        reason = "no lab document template";
        return false;
    }
    auto* document =
        static_cast<ViewerDocument*>(labTemplate->CreateDocument(wxString(), wxDOC_NEW));
    if (!document) {
        reason = "cannot make a new document";
        return false;
    }
    document->SetDocumentName(labTemplate->GetDocumentName());
    document->SetDocumentTemplate(labTemplate);
    if (!document->OnNewDocument()) {
        document->DeleteAllViews();
        reason = "cannot make a new document";
        return false;
    }
    auto follow = std::make_unique<LiveFollow>(*document, options);
    if (!follow->Open(reason)) {
        follow.reset();
        document->Modify(false);
        document->DeleteAllViews();
        return false;
    }
    document->SetTitle(vyrtools::Recording::SourceName(options.source));
    document->UpdateAllViews();
    document->Follow(std::move(follow));
    return true;
}

LiveFollow::LiveFollow(ViewerDocument& document, const Options& options)
    : m_document(document),
      m_options(options),
      m_recording(document.GetData(), options.settings, options.limits),
      m_timer(this) {
    Bind(wxEVT_TIMER, &LiveFollow::OnTimer, this);
}

LiveFollow::~LiveFollow() {
    m_timer.Stop();
}

bool LiveFollow::Open(wxString& reason) {
    if (!m_recording.Open(m_options.source, m_options.baud, reason))
        return false;
    // Repaints counted as they come, for the state report: the canvas paints as before.
    if (DiagramView* view = m_document.FindView(0))
        if (DiagramCanvas* canvas = view->GetCanvas())
            canvas->Bind(wxEVT_PAINT, &LiveFollow::OnPaint, this);
    m_timer.Start(kTickMs);
    return true;
}

void LiveFollow::OnPaint(wxPaintEvent& event) {
    ++m_paints;
    event.Skip();
}

void LiveFollow::OnTimer(wxTimerEvent&) {
    VyrDiagram* diagram = m_document.GetData().GetDiagram(0);
    // Between two ticks only the user changes the zoom: a zoom unlike the window's, or any
    // zoom without a window, is theirs. New data make the diagram take its whole range again
    // (its scale is computed afresh), so the user's zoom is put back after them.
    VyrScale userZoom;
    if (diagram) {
        if (m_options.window <= 0)
            m_userZoom = diagram->IsZoomed();
        else if (!diagram->IsZoomed())
            m_userZoom = false;
        else if (m_windowSet && !SameScale(*diagram->GetCurrentScale(), m_lastWindow))
            m_userZoom = true;
        userZoom = *diagram->GetCurrentScale();
    }
    m_windowSet = false;
    // One read a tick: the library announces it once per curve, the canvas repaints once.
    const vyrtools::Recording::State state = m_recording.Step(0);
    ShowNewCurves();
    if (m_recording.GetRowCount() != m_rowsSeen) {
        m_rowsSeen = m_recording.GetRowCount();
        if (!m_document.IsModified())
            m_document.Modify(true);
        if (diagram && m_userZoom)
            diagram->SetZoom(&userZoom);
        else
            ApplyWindow();
    }
    if (state != vyrtools::Recording::kRecording) {
        m_timer.Stop();
        ReportEnd();
    }
}

void LiveFollow::ShowNewCurves() {
    VyrExperience* experience = m_recording.GetExperience();
    if (!experience || experience == m_shown)
        return;
    m_shown = experience;
    VyrBaseData& data = m_document.GetData();
    for (int d = 0; d < 2; ++d)
        if (VyrDiagram* diagram = data.GetDiagram(d))
            diagram->Fill();
    m_document.UpdateAllViews();
}

void LiveFollow::ApplyWindow() {
    VyrDiagram* diagram = m_document.GetData().GetDiagram(0);
    VyrExperience* experience = m_recording.GetExperience();
    if (m_options.window <= 0 || !diagram || !experience)
        return;
    wxVyrListCourbeNode* first = experience->GetFirstCourbeNode();
    VyrCourbe* curve = first ? first->GetData() : nullptr;
    if (!curve || !curve->GetVx() || curve->GetVx()->GetSize() == 0)
        return;
    const VyrVecteur* x = curve->GetVx();
    const double newest = x->GetVal(x->GetSize() - 1);
    const VyrScale* base = diagram->GetScale();
    if (!base)
        return;
    VyrScale window;
    window.Set(std::max(newest - m_options.window, base->GetXmin()), newest, base->GetYmin(),
               base->GetYmax());
    if (!(window.GetXmax() > window.GetXmin()))
        return;
    diagram->SetZoom(&window);
    m_lastWindow = *diagram->GetCurrentScale();
    m_windowSet = true;
}

void LiveFollow::ReportEnd() {
    DocumentFrame* frame = m_document.GetFrame();
    wxString text;
    if (m_recording.GetState() == vyrtools::Recording::kFailed)
        text = "Recording stopped: " + m_recording.GetReason();
    else
        text = wxString::Format("Recording ended (%s): %zu rows", m_recording.GetEndReason(),
                                m_recording.GetRowCount());
    if (frame && frame->GetStatusBar())
        frame->SetStatusText(text, 0);
}

void LiveFollow::PrintState() const {
    std::printf("follow-rows: %zu\n", m_recording.GetRowCount());
    std::printf("follow-skipped: %zu\n", m_recording.GetSkippedCount());
    switch (m_recording.GetState()) {
        case vyrtools::Recording::kRecording:
            std::printf("follow-state: recording\n");
            break;
        case vyrtools::Recording::kEnded:
            std::printf("follow-state: ended (%s)\n", m_recording.GetEndReason());
            break;
        case vyrtools::Recording::kFailed:
            std::printf("follow-state: failed: %s\n",
                        static_cast<const char*>(m_recording.GetReason().utf8_str()));
            break;
    }
    std::printf("follow-paints: %d\n", m_paints);
    std::printf("follow-seconds: %.3f\n", m_recording.GetElapsed());
    std::printf("follow-window: %s\n", m_options.window <= 0 ? "off"
                                       : m_userZoom          ? "user zoom"
                                                             : "on");
}
