#include "ScriptDriver.h"

#include <cstdio>

#include <wx/cmdproc.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/dnd.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/docview.h>
#include <wx/menu.h>
#include <wx/print.h>
#include <wx/textfile.h>
#include <wx/tokenzr.h>
#include <wx/uiaction.h>

#include "DiagramCanvas.h"
#include "DiagramView.h"
#include "DocumentFrame.h"
#include "FitDialog.h"
#include "LiveFollow.h"
#include "MainFrame.h"
#include "SidePanel.h"
#include "ViewerApp.h"
#include "ViewerDocument.h"
#include "ViewerIds.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// Time for the windows to be laid out and painted between two commands.
const int kPauseMs = 150;
// A wait looks again this often, and fails after this long.
const int kWaitStepMs = 20;
const int kWaitLimitMs = 30000;

wxString Rest(const wxArrayString& words, size_t from) {
    wxString rest;
    for (size_t i = from; i < words.size(); ++i)
        rest += (i > from ? " " : "") + words[i];
    return rest;
}

bool ToInts(const wxArrayString& words, size_t from, size_t count, int* values) {
    if (words.size() != from + count)
        return false;
    for (size_t i = 0; i < count; ++i) {
        long v = 0;
        if (!words[from + i].ToLong(&v))
            return false;
        values[i] = static_cast<int>(v);
    }
    return true;
}

void SendMouse(wxWindow* window, wxEventType type, wxPoint p, bool leftDown) {
    wxMouseEvent event(type);
    event.SetEventObject(window);
    event.SetId(window->GetId());
    event.SetPosition(p);
    event.SetLeftDown(leftDown);
    window->GetEventHandler()->ProcessEvent(event);
}

wxString Join(const wxArrayString& names) {
    wxString text;
    for (size_t i = 0; i < names.size(); ++i)
        text += (i ? ", " : "") + names[i];
    return text;
}

// The comment of the document's first experiment (an imported table's keeps its start).
wxString FirstExperimentComment(VyrBaseData& data) {
    wxVyrListEntityNode* node = data.GetFirstExperienceNode();
    VyrExperience* experience = node ? data.GetNextExperience(&node) : nullptr;
    return experience ? experience->GetCommentaire() : wxString();
}

void Print(const char* key, const wxString& value) {
    std::printf("%s: %s\n", key, (const char*)value.utf8_str());
}

}  // namespace

ScriptDriver::ScriptDriver(ViewerApp& app) : m_app(app), m_timer(this) {
    Bind(wxEVT_TIMER, &ScriptDriver::OnTimer, this);
}

bool ScriptDriver::Load(const wxString& path) {
    wxTextFile file;
    if (!wxFileExists(path) || !file.Open(path)) {
        std::fprintf(stderr, "vyr-view: %s: cannot open the script\n",
                     (const char*)path.utf8_str());
        return false;
    }
    for (size_t i = 0; i < file.GetLineCount(); ++i)
        m_lines.Add(file[i]);
    return true;
}

void ScriptDriver::Start() {
    m_timer.StartOnce(kPauseMs);
}

void ScriptDriver::OnTimer(wxTimerEvent&) {
    // What the last command left for later (side panel rebuilds, a second diagram's view) is
    // done before the next command looks: a busy machine may run this timer first.
    m_app.ProcessPendingEvents();
    while (m_next < m_lines.size()) {
        const wxString line = m_lines[m_next++].Strip(wxString::both);
        if (line.empty() || line.StartsWith("#"))
            continue;
        wxString error;
        if (!Run(line, error)) {
            std::fprintf(stderr, "vyr-view: script line %zu: %s: %s\n", m_next,
                         (const char*)line.utf8_str(), (const char*)error.utf8_str());
            Finish(1);
            return;
        }
        std::fflush(stdout);
        if (line == "quit")
            return;
        if (m_again) {
            // A wait not yet over: the same line again, soon.
            m_again = false;
            --m_next;
            m_timer.StartOnce(kWaitStepMs);
            return;
        }
        m_timer.StartOnce(kPauseMs);
        return;
    }
    Finish(0);
}

void ScriptDriver::Finish(int status) {
    m_timer.Stop();
    if (status)
        m_app.SetExitStatus(status);
    std::fflush(stdout);
    // A script ends without asking to save: its changes are dropped.
    for (wxObject* document : m_app.GetDocManager()->GetDocuments())
        static_cast<wxDocument*>(document)->Modify(false);
    if (m_app.GetMainFrame())
        m_app.GetMainFrame()->Close(true);
}

ViewerDocument* ScriptDriver::CurrentDocument() const {
    const wxList& documents = m_app.GetDocManager()->GetDocuments();
    return documents.empty() ? nullptr
                             : static_cast<ViewerDocument*>(documents.GetLast()->GetData());
}

DocumentFrame* ScriptDriver::CurrentFrame() const {
    ViewerDocument* document = CurrentDocument();
    return document ? document->GetFrame() : nullptr;
}

DiagramCanvas* ScriptDriver::CurrentCanvas() const {
    ViewerDocument* document = CurrentDocument();
    DocumentFrame* frame = CurrentFrame();
    if (!document || !frame)
        return nullptr;
    VyrDiagram* active = document->GetData().GetActiveDiagram();
    return frame->FindCanvas(active ? active->GetIndex() : 0);
}

// Every command: its name, whether it needs an open document, and what runs it.
const ScriptDriver::CommandEntry ScriptDriver::kCommands[] = {
    {"quit", false, &ScriptDriver::Quit},
    {"open", false, &ScriptDriver::Open},
    {"drop", false, &ScriptDriver::Drop},
    {"size", true, &ScriptDriver::Size},
    {"check", true, &ScriptDriver::Check},
    {"uncheck", true, &ScriptDriver::Check},
    {"select", true, &ScriptDriver::SelectRow},
    {"scale", true, &ScriptDriver::Scale},
    {"press", true, &ScriptDriver::Mouse},
    {"click", true, &ScriptDriver::Mouse},
    {"dclick", true, &ScriptDriver::Mouse},
    {"drag", true, &ScriptDriver::Mouse},
    {"hover", true, &ScriptDriver::Mouse},
    {"down", true, &ScriptDriver::Mouse},
    {"move", true, &ScriptDriver::Mouse},
    {"up", true, &ScriptDriver::Mouse},
    {"real-drag", true, &ScriptDriver::RealMouse},
    {"real-dclick", true, &ScriptDriver::RealMouse},
    {"menu", true, &ScriptDriver::Menu},
    {"diagram", true, &ScriptDriver::ActivateDiagram},
    {"close-window", true, &ScriptDriver::CloseWindow},
    {"saveas", true, &ScriptDriver::SaveAs},
    {"export", true, &ScriptDriver::Picture},
    {"screenshot", true, &ScriptDriver::Picture},
    {"grab", true, &ScriptDriver::Picture},
    {"preview", true, &ScriptDriver::Preview},
    {"state", true, &ScriptDriver::State},
    {"fit", true, &ScriptDriver::Fit},
    {"wait-rows", true, &ScriptDriver::WaitFollow},
    {"wait-end", true, &ScriptDriver::WaitFollow},
};

bool ScriptDriver::Run(const wxString& line, wxString& error) {
    const wxArrayString words = wxStringTokenize(line, " \t", wxTOKEN_STRTOK);
    for (const CommandEntry& entry : kCommands) {
        if (words[0] != entry.name)
            continue;
        if (entry.needsDocument && !CurrentFrame()) {
            error = "no document is open";
            return false;
        }
        return (this->*entry.run)(words, error);
    }
    error = "unknown command";
    return false;
}

bool ScriptDriver::Quit(const wxArrayString&, wxString&) {
    Finish(0);
    return true;
}

bool ScriptDriver::Open(const wxArrayString& words, wxString& error) {
    if (words.size() < 2) {
        error = "needs a FILE";
        return false;
    }
    if (!m_app.GetDocManager()->CreateDocument(Rest(words, 1), wxDOC_SILENT)) {
        error = "the document was not opened";
        return false;
    }
    return true;
}

bool ScriptDriver::Drop(const wxArrayString& words, wxString& error) {
    if (words.size() < 2) {
        error = "needs a FILE";
        return false;
    }
    // As the desktop drops a file on the main window: through its drop target.
    auto* target = static_cast<wxFileDropTarget*>(m_app.GetMainFrame()->GetDropTarget());
    wxArrayString files;
    files.Add(wxFileName(Rest(words, 1)).GetAbsolutePath());
    if (!target || !target->OnDropFiles(0, 0, files)) {
        error = "the drop opened nothing";
        return false;
    }
    return true;
}

bool ScriptDriver::Size(const wxArrayString& words, wxString& error) {
    int size[2];
    if (!ToInts(words, 1, 2, size)) {
        error = "needs W H";
        return false;
    }
    DocumentFrame* frame = CurrentFrame();
    frame->SetClientSize(size[0], size[1]);
    frame->Layout();
    return true;
}

bool ScriptDriver::Check(const wxArrayString& words, wxString& error) {
    if (!CurrentFrame()->GetSidePanel()->CheckRow(Rest(words, 1), words[0] == "check")) {
        error = "no such row in the side panel";
        return false;
    }
    return true;
}

bool ScriptDriver::SelectRow(const wxArrayString& words, wxString& error) {
    if (!CurrentFrame()->GetSidePanel()->SelectRow(Rest(words, 1))) {
        error = "no such row in the side panel";
        return false;
    }
    return true;
}

bool ScriptDriver::Scale(const wxArrayString& words, wxString& error) {
    const char* const types[] = {"auto", "standard", "manual"};
    for (int type = 0; type < 3; ++type)
        if (words.size() == 2 && words[1] == types[type]) {
            CurrentFrame()->GetSidePanel()->ChooseScaleType(type);
            return true;
        }
    error = "needs auto, standard or manual";
    return false;
}

bool ScriptDriver::ActivateDiagram(const wxArrayString& words, wxString& error) {
    int index = 0;
    DiagramCanvas* canvas = nullptr;
    if (ToInts(words, 1, 1, &index))
        canvas = CurrentFrame()->FindCanvas(index);
    if (!canvas || !canvas->GetView()) {
        error = "no such diagram window";
        return false;
    }
    canvas->GetView()->Activate(true);
    return true;
}

bool ScriptDriver::CloseWindow(const wxArrayString&, wxString&) {
    // As the window's close button; a script never answers whether to save.
    CurrentDocument()->Modify(false);
    CurrentFrame()->Close();
    return true;
}

bool ScriptDriver::SaveAs(const wxArrayString& words, wxString& error) {
    // What Save As does once its dialog has answered.
    ViewerDocument* document = CurrentDocument();
    const wxString path = Rest(words, 1);
    if (path.empty() || !document->OnSaveDocument(path)) {
        error = "the document was not saved";
        return false;
    }
    document->SetTitle(wxFileNameFromPath(path));
    document->SetFilename(path, true);
    return true;
}

bool ScriptDriver::Picture(const wxArrayString& words, wxString& error) {
    DiagramCanvas* canvas = CurrentCanvas();
    if (words.size() < 2 || !canvas || !canvas->GetView()) {
        error = "needs FILE and a diagram window";
        return false;
    }
    const wxString path = Rest(words, 1);
    bool done = false;
    if (words[0] == "export") {
        done = canvas->GetView()->ExportTo(path);
    } else if (words[0] == "screenshot") {
        done = canvas->Snapshot().SaveFile(path, wxBITMAP_TYPE_PNG);
    } else {
        // What the screen shows of the document's window.
        DocumentFrame* frame = CurrentFrame();
        frame->Raise();
        frame->Update();
        const wxRect rect = frame->GetScreenRect();
        wxBitmap bitmap(rect.width, rect.height, 24);
        {
            wxMemoryDC memory(bitmap);
            wxScreenDC screen;
            done = memory.Blit(0, 0, rect.width, rect.height, &screen, rect.x, rect.y);
        }
        done = done && bitmap.SaveFile(path, wxBITMAP_TYPE_PNG);
    }
    if (!done)
        error = "nothing was written";
    return done;
}

bool ScriptDriver::Preview(const wxArrayString& words, wxString& error) {
    long page = 1;
    if (words.size() < 2 || words.size() > 3 || (words.size() == 3 && !words[2].ToLong(&page))) {
        error = "needs FILE [PAGE]";
        return false;
    }
    // As the menu opens it: through the document manager, which asks the active view for its
    // printout and opens the preview window.
    DocumentFrame* frame = CurrentFrame();
    frame->UpdateWindowUI();
    wxMenuItem* item = frame->GetMenuBar()->FindItem(wxID_PREVIEW);
    if (!item || !item->IsEnabled()) {
        error = "the menu item is disabled";
        return false;
    }
    frame->ProcessCommand(item);
    wxPreviewFrame* previewFrame = nullptr;
    for (wxWindow* window : wxTopLevelWindows)
        if (auto* found = dynamic_cast<wxPreviewFrame*>(window))
            previewFrame = found;
    wxPrintPreviewBase* preview = previewFrame && previewFrame->GetControlBar()
                                      ? previewFrame->GetControlBar()->GetPrintPreview()
                                      : nullptr;
    if (!preview || !preview->IsOk()) {
        if (previewFrame)
            previewFrame->Close(true);
        error = "no print preview was opened";
        return false;
    }
    // The preview learns its pages from the printout when it renders the first one.
    preview->UpdatePageRendering();
    std::printf("preview-pages: %d\n", preview->GetMaxPage());
    bool done = false;
    if (page >= preview->GetMinPage() && page <= preview->GetMaxPage() &&
        preview->SetCurrentPage(static_cast<int>(page))) {
        preview->SetZoom(100);
        preview->UpdatePageRendering();
        wxPreviewCanvas* canvas = preview->GetCanvas();
        const wxSize size = canvas->GetVirtualSize();
        wxBitmap bitmap(size.x, size.y, 24);
        {
            wxMemoryDC memory(bitmap);
            // Around the page a colour that no diagram of the samples uses.
            memory.SetBackground(wxBrush(wxColour(0, 0, 128)));
            memory.Clear();
            done = preview->PaintPage(canvas, memory);
        }
        done = done && bitmap.SaveFile(words[1], wxBITMAP_TYPE_PNG);
    }
    previewFrame->Close(true);
    if (!done)
        error = "the preview page was not rendered";
    return done;
}

bool ScriptDriver::State(const wxArrayString&, wxString&) {
    PrintState();
    if (LiveFollow* follow = CurrentDocument()->GetFollow())
        follow->PrintState();
    return true;
}

bool ScriptDriver::WaitFollow(const wxArrayString& words, wxString& error) {
    LiveFollow* follow = CurrentDocument()->GetFollow();
    long rows = 0;
    if (words[0] == "wait-rows" && (words.size() != 2 || !words[1].ToLong(&rows) || rows < 0)) {
        error = "needs N";
        return false;
    }
    if (!follow) {
        error = "the document follows no recording";
        return false;
    }
    const bool done = words[0] == "wait-rows"
                          ? follow->GetRowCount() >= static_cast<size_t>(rows)
                          : follow->GetState() != vyrtools::Recording::kRecording;
    if (done) {
        m_waitStart = 0;
        return true;
    }
    if (m_waitStart == 0)
        m_waitStart = wxGetLocalTimeMillis();
    if (wxGetLocalTimeMillis() - m_waitStart > kWaitLimitMs) {
        m_waitStart = 0;
        error = wxString::Format("still %zu row(s) after %d s", follow->GetRowCount(),
                                 kWaitLimitMs / 1000);
        return false;
    }
    m_again = true;
    return true;
}

bool ScriptDriver::Fit(const wxArrayString& words, wxString& error) {
    DiagramCanvas* canvas = CurrentCanvas();
    ViewerDocument* document = CurrentDocument();
    VyrCourbe* curve = document ? document->GetSelectedCourbe() : nullptr;
    if (words.size() < 2 || words.size() > 3 || !canvas || !canvas->GetView() ||
        !canvas->GetView()->GetDiagram()) {
        error = "fit MODEL [P=V,...] | fit formula=F [P=V,...]";
        return false;
    }
    if (!curve) {
        error = "fit: no curve is selected";
        return false;
    }
    FitRequest request;
    if (words[1].StartsWith("formula=", &request.formula))
        request.model.clear();
    else
        request.model = words[1];
    request.starts = words.size() > 2 ? words[2] : wxString();
    const VyrScale* shown = canvas->GetView()->GetDiagram()->GetCurrentScale();
    request.xmin = shown->GetXmin();
    request.xmax = shown->GetXmax();
    wxString report;
    if (FitCurve(document->GetData(), curve, request, report))
        document->Modify(true);
    for (const wxString& line : wxStringTokenize(report, "\n"))
        Print("fit", line);
    canvas->Refresh();
    return true;
}

bool ScriptDriver::Mouse(const wxArrayString& words, wxString& error) {
    DiagramCanvas* canvas = CurrentCanvas();
    if (!canvas) {
        error = "no diagram window";
        return false;
    }
    const wxString command = words[0];
    int v[4];
    if (command == "drag") {
        if (!ToInts(words, 1, 4, v)) {
            error = "needs X0 Y0 X1 Y1";
            return false;
        }
        const wxPoint from(v[0], v[1]), to(v[2], v[3]);
        SendMouse(canvas, wxEVT_LEFT_DOWN, from, true);
        const int steps = 6;
        for (int i = 1; i <= steps; ++i)
            SendMouse(canvas, wxEVT_MOTION, from + (to - from) * i / steps, true);
        SendMouse(canvas, wxEVT_LEFT_UP, to, false);
        return true;
    }
    if (!ToInts(words, 1, 2, v)) {
        error = "needs X Y";
        return false;
    }
    const wxPoint p(v[0], v[1]);
    // One step of a gesture at a time, so that the state in between can be looked at.
    if (command == "hover" || command == "move") {
        SendMouse(canvas, wxEVT_MOTION, p, command == "move");
        return true;
    }
    if (command == "down" || command == "up") {
        SendMouse(canvas, command == "down" ? wxEVT_LEFT_DOWN : wxEVT_LEFT_UP, p,
                  command == "down");
        return true;
    }
    SendMouse(canvas, wxEVT_LEFT_DOWN, p, true);
    SendMouse(canvas, wxEVT_LEFT_UP, p, false);
    if (command == "dclick") {
        // The toolkit's order for a double click: down, up, double click, up.
        SendMouse(canvas, wxEVT_LEFT_DCLICK, p, true);
        SendMouse(canvas, wxEVT_LEFT_UP, p, false);
    }
    return true;
}

bool ScriptDriver::RealMouse(const wxArrayString& words, wxString& error) {
    DiagramCanvas* canvas = CurrentCanvas();
    int v[4];
    const bool drag = words[0] == "real-drag";
    if (!canvas || !ToInts(words, 1, drag ? 4 : 2, v)) {
        error = drag ? "needs X0 Y0 X1 Y1 and a diagram window" : "needs X Y and a diagram window";
        return false;
    }
    // Through the display server, as a person's mouse: the events arrive in the event loop
    // before the next command runs.
    wxUIActionSimulator mouse;
    const wxPoint from = canvas->ClientToScreen(wxPoint(v[0], v[1]));
    bool sent = mouse.MouseMove(from);
    if (drag) {
        const wxPoint to = canvas->ClientToScreen(wxPoint(v[2], v[3]));
        sent = sent && mouse.MouseDown();
        const int steps = 6;
        for (int i = 1; i <= steps; ++i)
            sent = sent && mouse.MouseMove(from + (to - from) * i / steps);
        sent = sent && mouse.MouseUp();
    } else {
        sent = sent && mouse.MouseDblClick();
    }
    if (!sent)
        error = "the display refused the simulated mouse";
    return sent;
}

bool ScriptDriver::Menu(const wxArrayString& words, wxString& error) {
    if (words.size() != 2) {
        error = "needs one menu command";
        return false;
    }
    const wxString what = words[1];
    static const struct {
        const char* name;
        int id;
    } kItems[] = {
        {"delete", wxID_DELETE},           {"undo", wxID_UNDO},        {"redo", wxID_REDO},
        {"zoom-normal", ID_ZOOM_NORMAL},   {"next-y", ID_NEXT_Y_UNIT}, {"grid", ID_SHOW_GRID},
        {"two-diagrams", ID_TWO_DIAGRAMS}, {"save", wxID_SAVE},        {"close", wxID_CLOSE},
        {"plain", ID_PLAIN_PICTURE},
    };
    DocumentFrame* frame = CurrentFrame();
    for (const auto& item : kItems) {
        if (what != item.name)
            continue;
        // As when the menu opens: the items' states are brought up to date first, and a
        // disabled item does nothing.
        frame->UpdateWindowUI();
        if (item.id == wxID_CLOSE)
            // A script never answers the question whether to save: closing drops the changes.
            CurrentDocument()->Modify(false);
        wxMenuItem* menuItem = frame->GetMenuBar()->FindItem(item.id);
        if (!menuItem || !menuItem->IsEnabled()) {
            error = "the menu item is disabled";
            return false;
        }
        frame->ProcessCommand(menuItem);
        return true;
    }
    error = "unknown menu command";
    return false;
}

void ScriptDriver::PrintState() {
    ViewerDocument* document = CurrentDocument();
    DocumentFrame* frame = CurrentFrame();
    VyrBaseData& data = document->GetData();
    VyrDiagram* diagram = data.GetActiveDiagram();
    Print("title", frame->GetTitle());
    Print("file", wxFileName(document->GetFilename()).GetFullName());
    // The file types File > Open offers: one per document template.
    wxArrayString types;
    for (wxObjectList::compatibility_iterator node =
             m_app.GetDocManager()->GetTemplates().GetFirst();
         node; node = node->GetNext()) {
        auto* temple = static_cast<wxDocTemplate*>(node->GetData());
        if (temple->IsVisible())
            types.Add(temple->GetDescription() + " (" + temple->GetFileFilter() + ")");
    }
    Print("open-types", Join(types));
    Print("comment", FirstExperimentComment(data));
    Print("modified", document->IsModified() ? "yes" : "no");
    Print("diagrams", wxString::Format("%d", data.GetDiagramCount()));
    Print("windows",
          wxString::Format("%d", (frame->FindCanvas(0) ? 1 : 0) + (frame->FindCanvas(1) ? 1 : 0)));
    // Where the active diagram's window lies in the picture that "grab" takes.
    if (DiagramCanvas* canvas = CurrentCanvas()) {
        const wxRect rect(canvas->GetScreenPosition() - frame->GetScreenPosition(),
                          canvas->GetClientSize());
        Print("window-canvas",
              wxString::Format("%d %d %d %d", rect.x, rect.y, rect.width, rect.height));
    }
    Print("active-diagram", diagram ? wxString::Format("%d", diagram->GetIndex()) : "none");
    Print("listed", Join(frame->GetSidePanel()->GetListedCurves(false)));
    Print("checked", Join(frame->GetSidePanel()->GetListedCurves(true)));
    wxArrayString plotted;
    if (diagram)
        for (VyrCourbe* courbe : diagram->GetPlottedCourbes())
            plotted.Add(courbe->GetName());
    Print("plotted", Join(plotted));
    Print("zoomed", diagram && diagram->IsZoomed() ? "yes" : "no");
    Print("scale", diagram ? wxString::Format("%d", diagram->GetTypeScale()) : "none");
    Print("panel-scale", wxString::Format("%d", frame->GetSidePanel()->GetScaleChoice()));
    Print("uy", diagram ? diagram->GetUy() : wxString());
    if (diagram) {
        const VyrScale* s = diagram->GetCurrentScale();
        Print("current-scale", wxString::Format("%g %g %g %g", s->GetXmin(), s->GetXmax(),
                                                s->GetYmin(), s->GetYmax()));
    }
    Print("selection", document->DescribeSelection());
    VyrNote* title = diagram ? diagram->GetNoteTitre() : nullptr;
    Print("diagram-title", title ? title->GetText() : wxString());
    int notes = 0;
    for (auto* node = data.GetEntityList().GetFirst(); node; node = node->GetNext())
        notes += node->GetData()->GetKind() == VYR_KIND_NOTE;
    Print("notes", wxString::Format("%d", notes));
    VyrCourbe* courbe = nullptr;
    if (VyrNote* note = document->GetSelectedNote(&courbe))
        Print("selected-note", wxString::Format("state %d at %g %g", note->GetState(),
                                                note->GetPositionX(), note->GetPositionY()));
    wxCommandProcessor* processor = document->GetCommandProcessor();
    Print("can-undo", processor && processor->CanUndo() ? "yes" : "no");
    Print("can-redo", processor && processor->CanRedo() ? "yes" : "no");
    Print("status", frame->GetStatusBar()->GetStatusText(0) + " | " +
                        frame->GetStatusBar()->GetStatusText(1));
}
