// vyr-view: a desktop viewer of lab documents built on the toolkit's document/view framework.
// Documents come from File > Open, the command line or a drop; `--script FILE` drives the
// viewer from a file of commands (see ScriptDriver.h).
#ifndef VYR_VIEW_VIEWERAPP_H
#define VYR_VIEW_VIEWERAPP_H

#include <memory>

#include <wx/app.h>
#include <wx/arrstr.h>

#include "LiveFollow.h"
#include "PictureOptions.h"

class MainFrame;
class ScriptDriver;
class wxDocManager;

class ViewerApp : public wxApp {
public:
    ViewerApp();
    ~ViewerApp() override;

    bool OnInit() override;
    int OnExit() override;
    int OnRun() override;
    void OnInitCmdLine(wxCmdLineParser& parser) override;
    bool OnCmdLineParsed(wxCmdLineParser& parser) override;

    wxDocManager* GetDocManager() const { return m_manager; }
    // How new views paint their diagrams (--plain, --no-legend).
    const PictureOptions& GetPictureOptions() const { return m_look; }
    MainFrame* GetMainFrame() const { return m_mainFrame; }
    // The process's exit status once the main loop ends (a failed script sets it).
    void SetExitStatus(int status) { m_exitStatus = status; }

private:
    wxDocManager* m_manager = nullptr;
    MainFrame* m_mainFrame = nullptr;
    std::unique_ptr<ScriptDriver> m_script;
    wxArrayString m_files;
    wxString m_scriptPath;
    PictureOptions m_look;
    LiveFollow::Options m_follow;
    int m_exitStatus = 0;
};

wxDECLARE_APP(ViewerApp);

#endif
