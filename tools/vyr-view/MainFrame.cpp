#include "MainFrame.h"

#include <wx/aboutdlg.h>
#include <wx/menu.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "FileDrop.h"

MainFrame::MainFrame(wxDocManager* manager)
    : wxDocParentFrame(manager, nullptr, wxID_ANY, "vyr-view", wxDefaultPosition,
                       wxSize(420, 200)) {
    auto* file = new wxMenu;
    file->Append(wxID_OPEN, "&Open...\tCtrl+O");
    file->AppendSeparator();
    file->Append(wxID_EXIT, "E&xit\tCtrl+Q");
    manager->FileHistoryUseMenu(file);
    manager->FileHistoryAddFilesToMenu(file);
    auto* help = new wxMenu;
    help->Append(wxID_ABOUT, "&About vyr-view");
    auto* bar = new wxMenuBar;
    bar->Append(file, "&File");
    bar->Append(help, "&Help");
    SetMenuBar(bar);

    auto* panel = new wxPanel(this);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->AddStretchSpacer();
    sizer->Add(new wxStaticText(panel, wxID_ANY,
                                "Open a lab document (File > Open),\n"
                                "or drop one on this window.",
                                wxDefaultPosition, wxDefaultSize, wxALIGN_CENTRE_HORIZONTAL),
               0, wxALIGN_CENTRE | wxALL, 12);
    sizer->AddStretchSpacer();
    panel->SetSizer(sizer);
    SetDropTarget(new FileDrop(manager));
    Bind(wxEVT_MENU, &MainFrame::OnAbout, this, wxID_ABOUT);
}

void MainFrame::ShowAbout(wxWindow* parent) {
    wxAboutDialogInfo info;
    info.SetName("vyr-view");
    info.SetDescription(
        "Shows lab documents: experiments, curves, notes and interval tools on one or two "
        "diagrams.");
    wxAboutBox(info, parent);
}

void MainFrame::OnAbout(wxCommandEvent&) {
    ShowAbout(this);
}
