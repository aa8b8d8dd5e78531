#include "vyrbase/data/VyrCourbe.h"

#include <wx/app.h>

#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
// The application's layout direction. The process may run a console application object (or
// none at all), which has no layout: only a GUI application can ask for right to left.
bool IsRightToLeft() {
    auto* app = dynamic_cast<wxApp*>(wxAppConsole::GetInstance());
    return app && app->GetLayoutDirection() == wxLayout_RightToLeft;
}
}  // namespace

VyrCourbe::VyrCourbe(int oid, VyrBaseData* base) : VyrEntity(oid, base), m_colour(255, 0, 0) {}

VyrCourbe::~VyrCourbe() {
    if (m_pSoeur && m_pSoeur->m_pSoeur == this)
        m_pSoeur->m_pSoeur = nullptr;
    m_listNotes.Clear();
}

unsigned VyrCourbe::GetSize() const {
    return m_pVx ? static_cast<unsigned>(m_pVx->GetSize()) : 0u;
}

unsigned VyrCourbe::GetTrueSize() const {
    if (!m_pVx || !m_pVy)
        return 0;
    unsigned count = 0;
    for (int i = 0; i < m_pVx->GetSize(); ++i)
        if (m_pVx->IsValidAt(i) && m_pVy->IsValidAt(i))
            ++count;
    return count;
}

void VyrCourbe::SetSize(int n) {
    if (m_pVx)
        m_pVx->Resize(n);
    if (m_pVy)
        m_pVy->Resize(n);
}

void VyrCourbe::PreAlloc(int n) {
    if (m_pVx)
        m_pVx->PreAlloc(n);
    if (m_pVy)
        m_pVy->PreAlloc(n);
}

bool VyrCourbe::IsShownInDiagram(int index) const {
    return index == 0 || index == 1 ? m_bShownDiagram[index] : false;
}

void VyrCourbe::SetShownInDiagram(int index, bool shown) {
    if (index == 0 || index == 1)
        m_bShownDiagram[index] = shown;
}

// The style setters write the sister's field directly (not through its setter), so that the
// copy does not bounce back.
void VyrCourbe::SetColor(const wxColour& colour) {
    m_colour = colour;
    if (m_pSoeur)
        m_pSoeur->m_colour = colour;
}

void VyrCourbe::SetWidth(int width) {
    m_iWidth = width;
    if (m_pSoeur)
        m_pSoeur->m_iWidth = width;
}

void VyrCourbe::SetStylePoint(int style) {
    m_iStylePoint = style;
    if (m_pSoeur)
        m_pSoeur->m_iStylePoint = style;
}

void VyrCourbe::SetStyleLiaison(int style) {
    m_iStyleLiaison = style;
    if (m_pSoeur)
        m_pSoeur->m_iStyleLiaison = style;
}

void VyrCourbe::SetCourbeSoeur(VyrCourbe* sister) {
    if (sister == m_pSoeur)
        return;
    if (m_pSoeur && m_pSoeur->m_pSoeur == this)
        m_pSoeur->m_pSoeur = nullptr;
    m_pSoeur = sister;
    // The new sister drops its own former sister the same way, so that no curve is left
    // pointing at one that does not point back (and could be freed under it).
    if (sister)
        sister->SetCourbeSoeur(this);
}

void VyrCourbe::AddNote(VyrNote* note) {
    m_listNotes.Append(note);
}

void VyrCourbe::RemoveNote(VyrNote* note) {
    m_listNotes.DeleteObject(note);
}

int VyrCourbe::GetNotesCount() const {
    return static_cast<int>(m_listNotes.GetCount());
}

wxVyrListNoteNode* VyrCourbe::GetFirstNote() {
    return m_listNotes.GetFirst();
}

VyrNote* VyrCourbe::GetNextNote(wxVyrListNoteNode** cursor) {
    if (!cursor || !*cursor)
        return nullptr;
    VyrNote* note = (*cursor)->GetData();
    *cursor = (*cursor)->GetNext();
    return note;
}

wxString VyrCourbe::GetName() const {
    wxString grdY = m_pVy ? m_pVy->GetGrandeur() : wxString();
    wxString grdX = m_pVx ? m_pVx->GetGrandeur() : wxString();
    if (IsRightToLeft()) {
        // Left-to-right marks keep "U(t)" reading the same way inside a right-to-left layout.
        const wxUniChar lrm(0x200E);
        return wxString::Format("%c%s%c(%c%s%c)%c", lrm, grdY, lrm, lrm, grdX, lrm, lrm);
    }
    return wxString::Format("%s(%s)", grdY, grdX);
}
