// The side panel of a document: its experiments and their curves with a check box each, bound to
// the visibility of the curve in the active diagram (VyrDiagram::ShowCourbe), a row selection
// that is the document's selection, and the scale type of the active diagram. It observes both
// diagrams of its document and rebuilds itself when the document's structure or the curves'
// visibility change.
#ifndef VYR_VIEW_SIDEPANEL_H
#define VYR_VIEW_SIDEPANEL_H

#include <wx/arrstr.h>
#include <wx/panel.h>
#include <wx/treelist.h>

#include "vyrbase/core/VyrObserver.h"

class ViewerDocument;
class VyrDiagram;
class wxRadioBox;
class wxStaticText;

class SidePanel : public wxPanel, public VyrObserver {
public:
    SidePanel(wxWindow* parent, ViewerDocument* document);

    // Lists the document again from the active diagram's point of view.
    void Rebuild();

    // What a click on a row's check box does: shows or hides the curve (every curve of the
    // experiment) named `name` (the curve's display name "U(t)" or its entity name). False
    // when no row has that name.
    bool CheckRow(const wxString& name, bool checked);
    // What a click on a row does: selects the curve or experiment named `name`.
    bool SelectRow(const wxString& name);
    // What a click on the scale type does (0 automatic, 1 standard, 2 manual).
    void ChooseScaleType(int type);

    // The curves listed, each as its display name (only the checked ones when asked).
    wxArrayString GetListedCurves(bool checkedOnly) const;
    int GetScaleChoice() const;

    void OnUpdateObserver(VyrObserverMsg& msg) override;
    void OnInitialUpdateObserver() override;

private:
    VyrDiagram* Diagram() const;
    void ScheduleRebuild();
    wxTreeListItem FindRow(const wxString& name) const;
    void ApplyCheck(wxTreeListItem item, bool show);
    void OnItemChecked(wxTreeListEvent& event);
    void OnSelectionChanged(wxTreeListEvent& event);
    // The row's entity becomes the document's selection (nothing for no row).
    void SelectFromRow(wxTreeListItem item);
    void OnScaleType(wxCommandEvent& event);

    // Null once the document's diagrams were destroyed.
    ViewerDocument* m_document;
    wxStaticText* m_heading;
    wxTreeListCtrl* m_tree;
    wxRadioBox* m_scale;
    bool m_rebuilding = false;
    bool m_rebuildPending = false;
};

#endif
