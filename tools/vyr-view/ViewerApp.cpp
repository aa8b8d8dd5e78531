#include "ViewerApp.h"

#include <cstdio>

#include <wx/cmdline.h>
#include <wx/cmndata.h>
#include <wx/docview.h>
#include <wx/image.h>
#include <wx/log.h>

#include "DiagramView.h"
#include "MainFrame.h"
#include "ResourceCatalogue.h"
#include "ScriptDriver.h"
#include "ViewerDocument.h"

wxIMPLEMENT_APP(ViewerApp);

ViewerApp::ViewerApp() = default;
ViewerApp::~ViewerApp() = default;

void ViewerApp::OnInitCmdLine(wxCmdLineParser& parser) {
    wxApp::OnInitCmdLine(parser);
    parser.AddOption("", "script", "run the commands of FILE, then quit", wxCMD_LINE_VAL_STRING);
    parser.AddSwitch("", "plain", "paint the classic picture (no scale per unit, no legend)");
    parser.AddSwitch("", "no-legend", "leave the legend of the curves out");
    LiveFollow::AddOptions(parser);
    parser.AddParam("document", wxCMD_LINE_VAL_STRING,
                    wxCMD_LINE_PARAM_OPTIONAL | wxCMD_LINE_PARAM_MULTIPLE);
}

bool ViewerApp::OnCmdLineParsed(wxCmdLineParser& parser) {
    if (!wxApp::OnCmdLineParsed(parser))
        return false;
    parser.Found("script", &m_scriptPath);
    m_look.plain = parser.Found("plain");
    m_look.legend = !parser.Found("no-legend");
    wxString error;
    if (!LiveFollow::ReadOptions(parser, m_follow, error)) {
        std::fprintf(stderr, "vyr-view: %s\n", static_cast<const char*>(error.utf8_str()));
        return false;
    }
    for (size_t i = 0; i < parser.GetParamCount(); ++i)
        m_files.Add(parser.GetParam(i));
    return true;
}

bool ViewerApp::OnInit() {
    if (!wxApp::OnInit())
        return false;
    SetAppName("vyr-view");
    // The library's texts (experiment names, the name of deletions, time labels) come from the
    // viewer's catalogue, installed before any document is made.
    vyrtools::InstallResourceCatalogue();
    wxImage::AddHandler(new wxPNGHandler);
    if (!m_scriptPath.empty())
        // A script runs unattended: errors go to the standard error, never to a dialog.
        delete wxLog::SetActiveTarget(new wxLogStderr);

    m_manager = new wxDocManager;
    // Printed diagrams keep clear of the paper's edges (File > Page Setup changes it).
    wxPageSetupDialogData& pageSetup = m_manager->GetPageSetupDialogData();
    pageSetup.SetMarginTopLeft(wxPoint(15, 15));
    pageSetup.SetMarginBottomRight(wxPoint(15, 15));
    new wxDocTemplate(m_manager, "Lab document", "*.vyr", wxEmptyString, "vyr", "Lab document",
                      "Diagram", wxCLASSINFO(ViewerDocument), wxCLASSINFO(DiagramView));
    // Tables open as vyr import reads them (the document then becomes a lab document, to be
    // saved as one: the table itself is never written over).
    new wxDocTemplate(m_manager, "Text table", "*.csv;*.txt;*.tsv;*.dat", wxEmptyString, "csv",
                      "Lab document", "Diagram", wxCLASSINFO(ViewerDocument),
                      wxCLASSINFO(DiagramView));
    m_mainFrame = new MainFrame(m_manager);
    m_mainFrame->Show();
    SetTopWindow(m_mainFrame);

    for (const wxString& file : m_files)
        if (!m_manager->CreateDocument(file, wxDOC_SILENT) && !m_scriptPath.empty())
            m_exitStatus = 1;

    if (m_follow.wanted) {
        wxString reason;
        if (!LiveFollow::Begin(m_manager, m_follow, reason)) {
            wxLogError("%s: %s", m_follow.source, reason);
            if (!m_scriptPath.empty())
                m_exitStatus = 3;
        }
    }

    if (!m_scriptPath.empty()) {
        m_script = std::make_unique<ScriptDriver>(*this);
        if (!m_script->Load(m_scriptPath)) {
            m_exitStatus = 2;
            m_mainFrame->Close(true);
            return true;
        }
        m_script->Start();
    }
    return true;
}

int ViewerApp::OnRun() {
    const int status = wxApp::OnRun();
    return m_exitStatus ? m_exitStatus : status;
}

int ViewerApp::OnExit() {
    m_script.reset();
    delete m_manager;
    m_manager = nullptr;
    return wxApp::OnExit();
}
