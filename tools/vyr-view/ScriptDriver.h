// Drives the viewer from a file of commands, one a line, run one at a time from the event loop
// (with a pause between two, so that windows are laid out and painted as for a person). Each
// command goes through the same code as the user's action: menu commands are sent to the
// document's frame, mouse commands to a diagram's window as mouse events, the side panel's
// rows are checked and selected as a click would.
//
//   open FILE              opens a document (File > Open without the dialog)
//   size W H               sets the document frame's client size
//   check NAME | uncheck NAME
//                          ticks or clears the side panel's box of a curve or an experiment
//   select NAME            selects a curve or an experiment in the side panel
//   scale auto|standard|manual
//   press X Y | drag X0 Y0 X1 Y1 | click X Y | dclick X Y | hover X Y
//   down X Y | move X Y | up X Y
//                          (move: with the button held)
//                          mouse in the active diagram's window (client pixels), as mouse
//                          events sent to the window
//   real-drag X0 Y0 X1 Y1 | real-dclick X Y
//                          the same through the display server (the toolkit's UI simulator)
//   menu delete|undo|redo|zoom-normal|next-y|grid|two-diagrams|plain|save|close
//                          (close drops the changes: a script never answers questions)
//   close-window           closes the document's window as its close button does (dropping
//                          the changes)
//   diagram N              makes diagram N (0 or 1) the active one, as a click in its window
//   saveas FILE            saves under a new name (Save As without the dialog)
//   export FILE            File > Export without the dialog (.png, .svg, .csv)
//   preview FILE [PAGE]    File > Print Preview: prints "preview-pages: N", renders page PAGE
//                          (default 1) of the preview at 100 % as the preview window shows
//                          it, the page on its background, into FILE as PNG, and closes the
//                          preview
//   screenshot FILE        the active diagram's window, rendered into a bitmap, as PNG
//   grab FILE              the document frame as the screen shows it, as PNG
//   fit MODEL [P=V,...] | fit formula=F [P=V,...]
//                          Analysis > Fit without the dialog, on the selected curve over the
//                          active diagram's zoom: prints "fit: ..." lines of the result (a fit
//                          without result is reported, not a failure of the script)
//   state                  prints the viewer's state on the standard output, "key: value"
//                          (and the follow-... lines of a recording shown live)
//   wait-rows N | wait-end waits until a recording shown live (--follow) holds N rows, or has
//                          ended (fails after 30 s)
//   quit                   closes everything without saving and ends the program (also
//                          done after the last line)
//
// Blank lines and lines starting with "#" are skipped. A command that fails prints
// "vyr-view: script line N: ..." on the standard error and ends the program with status 1.
#ifndef VYR_VIEW_SCRIPTDRIVER_H
#define VYR_VIEW_SCRIPTDRIVER_H

#include <wx/arrstr.h>
#include <wx/longlong.h>
#include <wx/timer.h>

class DiagramCanvas;
class DocumentFrame;
class ViewerApp;
class ViewerDocument;

class ScriptDriver : public wxEvtHandler {
public:
    explicit ScriptDriver(ViewerApp& app);

    bool Load(const wxString& path);
    void Start();

private:
    void OnTimer(wxTimerEvent& event);
    // Runs one command line; false with `error` set when it failed.
    bool Run(const wxString& line, wxString& error);
    void Finish(int status);

    // The document the commands act on: the last one opened that is still open.
    ViewerDocument* CurrentDocument() const;
    DocumentFrame* CurrentFrame() const;
    DiagramCanvas* CurrentCanvas() const;

    // The commands, each given the line's words (the command first).
    typedef bool (ScriptDriver::*Command)(const wxArrayString& words, wxString& error);
    struct CommandEntry {
        const char* name;
        bool needsDocument;
        Command run;
    };
    static const CommandEntry kCommands[];
    bool Quit(const wxArrayString& words, wxString& error);
    bool Open(const wxArrayString& words, wxString& error);
    bool Drop(const wxArrayString& words, wxString& error);
    bool Size(const wxArrayString& words, wxString& error);
    bool Check(const wxArrayString& words, wxString& error);
    bool SelectRow(const wxArrayString& words, wxString& error);
    bool Scale(const wxArrayString& words, wxString& error);
    bool Mouse(const wxArrayString& words, wxString& error);
    bool RealMouse(const wxArrayString& words, wxString& error);
    bool Menu(const wxArrayString& words, wxString& error);
    bool ActivateDiagram(const wxArrayString& words, wxString& error);
    bool CloseWindow(const wxArrayString& words, wxString& error);
    bool SaveAs(const wxArrayString& words, wxString& error);
    bool Picture(const wxArrayString& words, wxString& error);
    bool Preview(const wxArrayString& words, wxString& error);
    bool State(const wxArrayString& words, wxString& error);
    bool Fit(const wxArrayString& words, wxString& error);
    bool WaitFollow(const wxArrayString& words, wxString& error);
    void PrintState();

    ViewerApp& m_app;
    wxArrayString m_lines;
    size_t m_next = 0;
    wxTimer m_timer;
    // A wait command asks to be run again (m_again) until its condition holds.
    bool m_again = false;
    wxLongLong m_waitStart = 0;
};

#endif
