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
