#include "file/VyrExperienceOwners.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"

VyrExperienceOwners::VyrExperienceOwners(VyrBaseData& doc) {
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node) {
        VyrExperience* experience = doc.GetNextExperience(&node);
        for (auto* c = experience->GetCourbes().GetFirst(); c; c = c->GetNext()) {
            VyrCourbe* curve = c->GetData();
            if (!curve)
                continue;
            // emplace keeps the first experiment met, as the document's searches answer.
            m_curves.emplace(curve, experience);
            if (curve->GetVx())
                m_vectors.emplace(curve->GetVx(), experience);
            if (curve->GetVy())
                m_vectors.emplace(curve->GetVy(), experience);
        }
    }
}

VyrExperience* VyrExperienceOwners::OfCourbe(const VyrCourbe* curve) const {
    auto found = m_curves.find(curve);
    return found == m_curves.end() ? nullptr : found->second;
}

VyrExperience* VyrExperienceOwners::OfVecteur(const VyrVecteur* vector) const {
    auto found = m_vectors.find(vector);
    return found == m_vectors.end() ? nullptr : found->second;
}
