// Finding curves, experiments and vectors over the whole document: first match in entity list
// order, so detached entities are never found.
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
// The first attached entity of `kind` (cast to T) for which match is true, or null.
template <class T, class Match>
T* FirstOfKind(VyrBaseData& base, int kind, Match match) {
    wxVyrListEntityNode* node = base.GetFirstEntityNode(kind);
    while (node) {
        auto* entity = static_cast<T*>(base.GetNextEntity(&node, kind));
        if (match(entity))
            return entity;
    }
    return nullptr;
}

bool UsesVector(VyrCourbe* c, VyrVecteur* v) {
    return c && (c->GetVx() == v || c->GetVy() == v);
}
}  // namespace

VyrCourbe* VyrBaseData::FindCourbe(const wchar_t* name) {
    if (!name)
        return nullptr;
    const wxString wanted(name);
    return FirstOfKind<VyrCourbe>(*this, VYR_KIND_COURBE,
                                  [&](VyrCourbe* c) { return c->GetEntityName() == wanted; });
}

VyrCourbe* VyrBaseData::FindCourbeByOid(int oid) {
    return FirstOfKind<VyrCourbe>(*this, VYR_KIND_COURBE,
                                  [&](VyrCourbe* c) { return c->GetOid() == oid; });
}

VyrExperience* VyrBaseData::FindExperience(const wchar_t* name) {
    if (!name)
        return nullptr;
    const wxString wanted(name);
    return FirstOfKind<VyrExperience>(
        *this, VYR_KIND_EXPERIENCE, [&](VyrExperience* e) { return e->GetEntityName() == wanted; });
}

VyrExperience* VyrBaseData::FindExperienceByOid(int oid) {
    return FirstOfKind<VyrExperience>(*this, VYR_KIND_EXPERIENCE,
                                      [&](VyrExperience* e) { return e->GetOid() == oid; });
}

VyrExperience* VyrBaseData::FindExperienceFromCourbe(VyrCourbe* c) {
    if (!c)
        return nullptr;
    return FirstOfKind<VyrExperience>(
        *this, VYR_KIND_EXPERIENCE, [&](VyrExperience* e) { return e->FindCourbe(c) != nullptr; });
}

VyrCourbe* VyrBaseData::FindCourbeByVect(VyrVecteur* v, bool* isX) {
    if (isX)
        *isX = false;
    if (!v)
        return nullptr;
    VyrCourbe* c = FirstOfKind<VyrCourbe>(*this, VYR_KIND_COURBE,
                                          [&](VyrCourbe* c) { return UsesVector(c, v); });
    if (c && isX)
        *isX = c->GetVx() == v;
    return c;
}

VyrExperience* VyrBaseData::FindExperienceByVect(VyrVecteur* v) {
    if (!v)
        return nullptr;
    return FirstOfKind<VyrExperience>(*this, VYR_KIND_EXPERIENCE, [&](VyrExperience* e) {
        for (auto* node = e->GetCourbes().GetFirst(); node; node = node->GetNext())
            if (UsesVector(node->GetData(), v))
                return true;
        return false;
    });
}

VyrVecteur* VyrBaseData::FindVector(const wxString& grandeur) {
    return FirstOfKind<VyrVecteur>(*this, VYR_KIND_VECTEUR,
                                   [&](VyrVecteur* v) { return v->GetGrandeur() == grandeur; });
}

VyrCourbe* VyrBaseData::FindFirstCourbeByGrdY(const wxString& grandeur) {
    return FirstOfKind<VyrCourbe>(*this, VYR_KIND_COURBE, [&](VyrCourbe* c) {
        return c->GetVy() && c->GetVy()->GetGrandeur() == grandeur;
    });
}

VyrCourbe* VyrBaseData::FindFirstCourbeByGrdxUx(const wxString& grandeur, const wxString& unite) {
    return FirstOfKind<VyrCourbe>(*this, VYR_KIND_COURBE, [&](VyrCourbe* c) {
        return c->GetVx() && c->GetVx()->GetGrandeur() == grandeur &&
               c->GetVx()->GetUnite() == unite;
    });
}
