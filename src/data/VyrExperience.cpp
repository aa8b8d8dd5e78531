#include "vyrbase/data/VyrExperience.h"

#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

VyrExperience::VyrExperience(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrExperience::~VyrExperience() {
    m_listCourbes.Clear();
    m_listVariables.Clear();
}

void VyrExperience::AddCourbe(VyrCourbe* c) {
    m_listCourbes.Append(c);
}

void VyrExperience::RemoveCourbe(VyrCourbe* c) {
    m_listCourbes.DeleteObject(c);
}

wxVyrListCourbeNode* VyrExperience::FindCourbe(VyrCourbe* c) {
    return m_listCourbes.Find(c);
}

wxVyrListCourbeNode* VyrExperience::GetFirstCourbeNode() {
    return m_listCourbes.GetFirst();
}

VyrCourbe* VyrExperience::GetNextCourbe(wxVyrListCourbeNode** cursor) {
    if (!cursor || !*cursor)
        return nullptr;
    VyrCourbe* c = (*cursor)->GetData();
    *cursor = (*cursor)->GetNext();
    return c;
}

int VyrExperience::GetNbCourbe() const {
    return static_cast<int>(m_listCourbes.GetCount());
}

void VyrExperience::AddVariable(VyrVariable* v) {
    m_listVariables.Append(v);
}

void VyrExperience::RemoveVariable(VyrVariable* v) {
    m_listVariables.DeleteObject(v);
}

wxVyrListVariableNode* VyrExperience::FindVariable(VyrVariable* v) {
    return m_listVariables.Find(v);
}

wxVyrListVariableNode* VyrExperience::GetFirstVariableNode() {
    return m_listVariables.GetFirst();
}

VyrVariable* VyrExperience::GetNextVariable(wxVyrListVariableNode** cursor) {
    if (!cursor || !*cursor)
        return nullptr;
    VyrVariable* v = (*cursor)->GetData();
    *cursor = (*cursor)->GetNext();
    return v;
}

int VyrExperience::GetNbVariable() const {
    return static_cast<int>(m_listVariables.GetCount());
}

int VyrExperience::GetNbCourbeConnected() const {
    int count = 0;
    for (auto* node = m_listCourbes.GetFirst(); node; node = node->GetNext())
        if (node->GetData() && !node->GetData()->IsDeconnected())
            ++count;
    return count;
}

template <class Match>
VyrCourbe* VyrExperience::FirstCourbe(Match match) {
    for (auto* node = m_listCourbes.GetFirst(); node; node = node->GetNext()) {
        VyrCourbe* c = node->GetData();
        if (c && match(c))
            return c;
    }
    return nullptr;
}

VyrCourbe* VyrExperience::FindCourbeByNom(const wchar_t* name) {
    if (!name)
        return nullptr;
    const wxString wanted(name);
    return FirstCourbe([&](VyrCourbe* c) { return c->GetEntityName() == wanted; });
}

VyrCourbe* VyrExperience::FindCourbeByEndNom(const wchar_t* suffix) {
    if (!suffix)
        return nullptr;
    const wxString wanted(suffix);
    return FirstCourbe([&](VyrCourbe* c) { return c->GetEntityName().EndsWith(wanted); });
}

VyrCourbe* VyrExperience::FindCourbeByVectNom(const wchar_t* grandeur, bool x) {
    if (!grandeur)
        return nullptr;
    const wxString wanted(grandeur);
    return FirstCourbe([&](VyrCourbe* c) {
        VyrVecteur* v = x ? c->GetVx() : c->GetVy();
        return v && v->GetGrandeur() == wanted;
    });
}

VyrCourbe* VyrExperience::FindCourbeByGrd(const wxString& grdY, const wxString& uniteY,
                                          const wxString& grdX, const wxString& uniteX) {
    return FirstCourbe([&](VyrCourbe* c) {
        VyrVecteur* vx = c->GetVx();
        VyrVecteur* vy = c->GetVy();
        return vx && vy && vx->GetGrandeur() == grdX && vx->GetUnite() == uniteX &&
               vy->GetGrandeur() == grdY && vy->GetUnite() == uniteY;
    });
}

VyrVecteur* VyrExperience::FindVect(const wxString& grandeur, const wxString& unite) {
    for (auto* node = m_listCourbes.GetFirst(); node; node = node->GetNext()) {
        VyrCourbe* c = node->GetData();
        if (!c)
            continue;
        for (VyrVecteur* v : {c->GetVx(), c->GetVy()})
            if (v && v->GetGrandeur() == grandeur && v->GetUnite() == unite)
                return v;
    }
    return nullptr;
}
