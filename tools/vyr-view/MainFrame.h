// The application's main window: File > Open (and the recent files), a drop target for document
// files, and a hint while no document is open. Each document opens in its own DocumentFrame.
#ifndef VYR_VIEW_MAINFRAME_H
#define VYR_VIEW_MAINFRAME_H

#include <wx/docview.h>

class MainFrame : public wxDocParentFrame {
public:
    explicit MainFrame(wxDocManager* manager);

    static void ShowAbout(wxWindow* parent);

private:
    void OnAbout(wxCommandEvent& event);
};

#endif
