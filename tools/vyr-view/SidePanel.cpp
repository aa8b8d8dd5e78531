#include "SidePanel.h"

#include <wx/dcmemory.h>
#include <wx/imaglist.h>
#include <wx/radiobox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ViewerDocument.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// A row's entity, by kind and oid (looked up again when used).
class RowData : public wxClientData {
public:
    RowData(int kind, int oid) : m_kind(kind), m_oid(oid) {}
    int m_kind;
    int m_oid;
};

const int kSwatchWidth = 16;
const int kSwatchHeight = 12;

wxBitmap Swatch(const wxColour& colour) {
    wxBitmap bitmap(kSwatchWidth, kSwatchHeight, 24);
    wxMemoryDC dc(bitmap);
    dc.SetBackground(*wxWHITE_BRUSH);
    dc.Clear();
    dc.SetPen(*wxBLACK_PEN);
    dc.SetBrush(wxBrush(colour));
    dc.DrawRectangle(1, 1, kSwatchWidth - 2, kSwatchHeight - 2);
    return bitmap;
}

}  // namespace

SidePanel::SidePanel(wxWindow* parent, ViewerDocument* document)
    : wxPanel(parent), m_document(document) {
    m_heading = new wxStaticText(this, wxID_ANY, "Diagram");
    m_tree = new wxTreeListCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                wxTL_SINGLE | wxTL_CHECKBOX | wxTL_3STATE);
    m_tree->AppendColumn("Experiments and curves", wxCOL_WIDTH_AUTOSIZE);
    const wxString types[] = {"Automatic", "Standard", "Manual"};
    m_scale = new wxRadioBox(this, wxID_ANY, "Scale", wxDefaultPosition, wxDefaultSize, 3, types, 1,
                             wxRA_SPECIFY_COLS);

    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_heading, 0, wxALL, 4);
    sizer->Add(m_tree, 1, wxEXPAND | wxLEFT | wxRIGHT, 4);
    sizer->Add(m_scale, 0, wxEXPAND | wxALL, 4);
    SetSizer(sizer);

    m_tree->Bind(wxEVT_TREELIST_ITEM_CHECKED, &SidePanel::OnItemChecked, this);
    m_tree->Bind(wxEVT_TREELIST_SELECTION_CHANGED, &SidePanel::OnSelectionChanged, this);
    m_scale->Bind(wxEVT_RADIOBOX, &SidePanel::OnScaleType, this);

    // Both diagrams pass the document's messages on, and say when they go away.
    VyrBaseData& data = document->GetData();
    for (int index = 0; index < 2; ++index)
        if (VyrDiagram* diagram = data.GetDiagram(index))
            diagram->AddObserver(this);
}

VyrDiagram* SidePanel::Diagram() const {
    if (!m_document)
        return nullptr;
    VyrBaseData& data = m_document->GetData();
    VyrDiagram* active = data.GetActiveDiagram();
    return active ? active : data.GetDiagram(0);
}

void SidePanel::OnUpdateObserver(VyrObserverMsg& msg) {
    switch (msg.GetMsg()) {
        case VYR_MSG_DIAGRAM_DESTROYED:
            // The document is going: nothing of it may be touched from now on.
            m_document = nullptr;
            return;
        case VYR_MSG_DATA_CHANGED:
            // Points changed or an active curve moved: the list itself stays.
            return;
        default:
            ScheduleRebuild();
            return;
    }
}

void SidePanel::OnInitialUpdateObserver() {
    ScheduleRebuild();
}

void SidePanel::ScheduleRebuild() {
    // Both diagrams pass the same message on: one rebuild for the pair, once the document has
    // finished changing.
    if (m_rebuildPending)
        return;
    m_rebuildPending = true;
    CallAfter([this] {
        m_rebuildPending = false;
        Rebuild();
    });
}

void SidePanel::Rebuild() {
    VyrDiagram* diagram = Diagram();
    m_rebuilding = true;
    m_tree->DeleteAllItems();
    if (!diagram) {
        m_rebuilding = false;
        return;
    }
    VyrBaseData& data = m_document->GetData();
    m_heading->SetLabel(
        wxString::Format("Diagram %d of %d", diagram->GetIndex() + 1, data.GetDiagramCount()));
    auto* images = new wxImageList(kSwatchWidth, kSwatchHeight);
    const Selection& selection = m_document->GetSelection();
    wxTreeListItem selected;
    wxVyrListEntityNode* node = data.GetFirstExperienceNode();
    while (node) {
        VyrExperience* experience = data.GetNextExperience(&node);
        wxTreeListItem row =
            m_tree->AppendItem(m_tree->GetRootItem(), experience->GetEntityName(), -1, -1,
                               new RowData(VYR_KIND_EXPERIENCE, experience->GetOid()));
        if (selection.kind == VYR_KIND_EXPERIENCE && selection.oid == experience->GetOid())
            selected = row;
        int shown = 0, count = 0;
        for (auto* c = experience->GetCourbes().GetFirst(); c; c = c->GetNext()) {
            VyrCourbe* courbe = c->GetData();
            const int image = images->Add(Swatch(courbe->GetColor()));
            wxTreeListItem curveRow =
                m_tree->AppendItem(row, courbe->GetName(), image, image,
                                   new RowData(VYR_KIND_COURBE, courbe->GetOid()));
            const bool visible = diagram->IsVisibleInterne(courbe);
            m_tree->CheckItem(curveRow, visible ? wxCHK_CHECKED : wxCHK_UNCHECKED);
            shown += visible;
            ++count;
            if (selection.kind == VYR_KIND_COURBE && selection.oid == courbe->GetOid())
                selected = curveRow;
        }
        m_tree->CheckItem(row, shown == 0       ? wxCHK_UNCHECKED
                               : shown == count ? wxCHK_CHECKED
                                                : wxCHK_UNDETERMINED);
        m_tree->Expand(row);
    }
    m_tree->AssignImageList(images);
    if (selected.IsOk())
        m_tree->Select(selected);
    m_scale->SetSelection(diagram->GetTypeScale());
    m_rebuilding = false;
}

wxTreeListItem SidePanel::FindRow(const wxString& name) const {
    for (wxTreeListItem item = m_tree->GetFirstItem(); item.IsOk();
         item = m_tree->GetNextItem(item)) {
        if (m_tree->GetItemText(item) == name)
            return item;
        auto* row = static_cast<RowData*>(m_tree->GetItemData(item));
        if (row && m_document) {
            VyrEntity* entity = m_document->GetData().FindEntity(row->m_oid);
            if (entity && entity->GetEntityName() == name)
                return item;
        }
    }
    return wxTreeListItem();
}

bool SidePanel::CheckRow(const wxString& name, bool checked) {
    wxTreeListItem item = FindRow(name);
    if (!item.IsOk())
        return false;
    m_tree->CheckItem(item, checked ? wxCHK_CHECKED : wxCHK_UNCHECKED);
    ApplyCheck(item, checked);
    return true;
}

bool SidePanel::SelectRow(const wxString& name) {
    wxTreeListItem item = FindRow(name);
    if (!item.IsOk())
        return false;
    m_tree->Select(item);
    // Selecting through the control sends no event: do what a click does.
    SelectFromRow(item);
    return true;
}

void SidePanel::ApplyCheck(wxTreeListItem item, bool show) {
    VyrDiagram* diagram = Diagram();
    auto* row = static_cast<RowData*>(m_tree->GetItemData(item));
    if (!diagram || !row)
        return;
    // ShowCourbe acts on the active document's diagrams.
    m_document->MakeActive();
    VyrBaseData& data = m_document->GetData();
    if (row->m_kind == VYR_KIND_COURBE) {
        VyrDiagram::ShowCourbe(data.FindCourbeByOid(row->m_oid), show, diagram->GetIndex());
    } else if (VyrExperience* experience = data.FindExperienceByOid(row->m_oid)) {
        for (auto* c = experience->GetCourbes().GetFirst(); c; c = c->GetNext())
            VyrDiagram::ShowCourbe(c->GetData(), show, diagram->GetIndex());
    }
}

void SidePanel::OnItemChecked(wxTreeListEvent& event) {
    if (m_rebuilding || !m_document)
        return;
    const wxTreeListItem item = event.GetItem();
    ApplyCheck(item, m_tree->GetCheckedState(item) == wxCHK_CHECKED);
}

void SidePanel::OnSelectionChanged(wxTreeListEvent& event) {
    if (!m_rebuilding)
        SelectFromRow(event.GetItem());
}

void SidePanel::SelectFromRow(wxTreeListItem item) {
    if (!m_document)
        return;
    VyrDiagram* diagram = Diagram();
    auto* row = item.IsOk() ? static_cast<RowData*>(m_tree->GetItemData(item)) : nullptr;
    Selection selection;
    if (row && diagram) {
        selection.kind = row->m_kind;
        selection.oid = row->m_oid;
        selection.diagram = diagram->GetIndex();
    }
    m_document->Select(selection);
}

void SidePanel::ChooseScaleType(int type) {
    VyrDiagram* diagram = Diagram();
    if (!diagram || type < VYR_SCALE_AUTO || type > VYR_SCALE_MANUAL)
        return;
    if (type == VYR_SCALE_MANUAL) {
        // The ranges shown now become the manual ones.
        if (diagram->GetTypeScale() != VYR_SCALE_MANUAL)
            diagram->AutoStandardToManu();
    } else {
        diagram->SetTypeScale(type);
    }
    m_scale->SetSelection(diagram->GetTypeScale());
    // Types 0 and 1 are announced by nobody: the views repaint through the document.
    m_document->UpdateAllViews();
}

void SidePanel::OnScaleType(wxCommandEvent& event) {
    if (!m_rebuilding)
        ChooseScaleType(event.GetSelection());
}

wxArrayString SidePanel::GetListedCurves(bool checkedOnly) const {
    wxArrayString names;
    for (wxTreeListItem item = m_tree->GetFirstItem(); item.IsOk();
         item = m_tree->GetNextItem(item)) {
        auto* row = static_cast<RowData*>(m_tree->GetItemData(item));
        if (!row || row->m_kind != VYR_KIND_COURBE)
            continue;
        if (!checkedOnly || m_tree->GetCheckedState(item) == wxCHK_CHECKED)
            names.Add(m_tree->GetItemText(item));
    }
    return names;
}

int SidePanel::GetScaleChoice() const {
    return m_scale->GetSelection();
}
