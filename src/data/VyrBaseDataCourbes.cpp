// Creating experiments, curves and variables in the document.
#include <climits>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

VyrExperience* VyrBaseData::CreateExperience(VyrExperienceParam& p) {
    if (VyrExperience* existing = FindExperience(p.m_sNom.wc_str()))
        return existing;
    auto* e = static_cast<VyrExperience*>(
        CreateEntity(VYR_KIND_EXPERIENCE, GetNewOid(), p.m_sNom.wc_str()));
    Notify(VYR_MSG_EXPERIENCE_CREATED, e);
    return e;
}

wxString VyrBaseData::GenerateExperienceName(const wxString& prefix, bool manipulation) {
    wxString stem = prefix;
    if (stem.empty())
        stem = VyrResourceText::Get(manipulation ? "IDS_MANIPULATION" : "IDS_EXPERIENCE");
    // Not the count of experiments: one more than the largest number in use, so that a gap
    // left by a deleted experiment is never filled with a name the user saw before.
    long largest = 0;
    wxVyrListEntityNode* node = GetFirstExperienceNode();
    while (node) {
        wxString rest;
        long n = 0;
        if (GetNextExperience(&node)->GetEntityName().StartsWith(stem, &rest) && !rest.empty() &&
            rest.ToLong(&n, 10) && n > largest && n < INT_MAX)
            largest = n;
    }
    return wxString::Format("%s%d", stem, static_cast<int>(largest + 1));
}

VyrCourbe* VyrBaseData::CreateCourbe(VyrExperience* e, VyrCourbeParam& p, bool* created,
                                     bool notify) {
    if (!e)
        return nullptr;
    VyrCourbe* c = e->FindCourbeByGrd(p.m_sGrdY, p.m_sUniteY, p.m_sGrdX, p.m_sUniteX);
    if (created)
        *created = c == nullptr;
    if (c) {
        // Reused: the acquisition starts again on the same curve, so that the diagrams keep it.
        DeleteNoteOfCourbe(c);
        c->GetVx()->Raz();
        c->GetVy()->Raz();
        if (notify)
            Notify(VYR_MSG_DATA_CHANGED, nullptr);
    } else {
        c = static_cast<VyrCourbe*>(CreateEntity(VYR_KIND_COURBE, GetNewOid(), p.m_sNom.wc_str()));
        e->AddCourbe(c);
        c->SetVx(static_cast<VyrVecteur*>(
            CreateEntity(VYR_KIND_VECTEUR, GetNewOid(), p.m_sNomVx.wc_str())));
        c->SetVy(static_cast<VyrVecteur*>(
            CreateEntity(VYR_KIND_VECTEUR, GetNewOid(), p.m_sNomVy.wc_str())));
    }
    c->SetText(p.m_sText);
    c->SetColor(p.m_colour);
    c->SetWidth(p.m_iWidth);
    c->SetStylePoint(p.m_iStylePoint);
    c->SetStyleLiaison(p.m_iStyleLiaison);
    c->GetScale().Set(p.m_scale.GetXmin(), p.m_scale.GetXmax(), p.m_scale.GetYmin(),
                      p.m_scale.GetYmax());
    c->GetVx()->SetGrandeur(p.m_sGrdX);
    c->GetVx()->SetUnite(p.m_sUniteX);
    c->GetVy()->SetGrandeur(p.m_sGrdY);
    c->GetVy()->SetUnite(p.m_sUniteY);
    c->SetUserValue(0.0);
    Notify(VYR_MSG_CURVE_CREATED, c);
    return c;
}

wxString VyrBaseData::GetUniqueGrandeur(VyrExperience* e, const wxString& grdY,
                                        const wxString& uniteY, const wxString& grdX,
                                        const wxString& uniteX) {
    wxString candidate = grdY;
    for (int k = 1; e && e->FindCourbeByGrd(candidate, uniteY, grdX, uniteX) && k < INT_MAX; ++k)
        candidate = wxString::Format("%s%d", grdY, k);
    return candidate;
}

VyrVariable* VyrBaseData::CreateVariableEntity(VyrExperience* e, wxString name) {
    if (!e)
        return nullptr;
    wxVyrListVariableNode* node = e->GetFirstVariableNode();
    while (node) {
        VyrVariable* v = e->GetNextVariable(&node);
        if (v && v->GetEntityName() == name)
            return v;
    }
    auto* v =
        static_cast<VyrVariable*>(CreateEntity(VYR_KIND_VARIABLE, GetNewOid(), name.wc_str()));
    e->AddVariable(v);
    return v;
}

void VyrBaseData::DeleteVariable(VyrVariable* v, VyrExperience* e) {
    if (!v)
        return;
    // The experiment given is only a hint: the one that really holds the variable loses it, so
    // that no experiment keeps a pointer to a deleted variable.
    if (!e || !e->FindVariable(v)) {
        e = nullptr;
        wxVyrListEntityNode* node = GetFirstExperienceNode();
        while (node && !e) {
            VyrExperience* candidate = GetNextExperience(&node);
            if (candidate->FindVariable(v))
                e = candidate;
        }
    }
    if (e)
        e->RemoveVariable(v);
    RemoveEntity(v);
}

void VyrBaseData::DeleteAllVariables(VyrExperience* e) {
    if (!e)
        return;
    // Walk a copy: each deletion edits the experiment's list.
    VyrListVariable variables;
    for (auto* node = e->GetVariables().GetFirst(); node; node = node->GetNext())
        variables.Append(node->GetData());
    for (auto* node = variables.GetFirst(); node; node = node->GetNext()) {
        e->RemoveVariable(node->GetData());
        RemoveEntity(node->GetData());
    }
}
