// Quick start: create a document, an experiment and a curve through the public API, fill it
// with measured points and print what the document holds. Built in the tree as `vyr-example`
// and, from outside, as the consumer of an installed VyrBase (CMake and pkg-config).
#include <cmath>
#include <cstdio>

#include <wx/init.h>

#include <vyrbase/VyrBase.h>

int main() {
    wxInitializer toolkit;  // the library uses the toolkit's strings, lists and translations
    if (!toolkit.IsOk()) {
        std::fprintf(stderr, "vyr-example: cannot initialise the toolkit\n");
        return 1;
    }

    VyrBaseData doc(nullptr);
    VyrExperienceParam experienceParam(doc.GenerateExperienceName(L"Pendulum ", true));
    VyrExperience* experience = doc.CreateExperience(experienceParam);

    VyrCourbeParam curveParam;
    curveParam.m_sNom = L"angle";
    curveParam.m_sGrdX = L"t";
    curveParam.m_sUniteX = L"s";
    curveParam.m_sGrdY = L"theta";
    curveParam.m_sUniteY = L"rad";
    bool created = false;
    VyrCourbe* curve = doc.CreateCourbe(experience, curveParam, &created, false);
    for (int i = 0; i <= 100; ++i) {
        const double t = i * 0.05;
        doc.AddPoint(curve, t, 0.3 * std::exp(-0.2 * t) * std::cos(2.0 * M_PI * t), false);
    }

    std::printf("document: %u entities, last oid %d, %d diagram(s)\n",
                static_cast<unsigned>(doc.GetEntityList().GetCount()), doc.GetLastOid(),
                doc.GetDiagramCount());
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = doc.GetNextExperience(&node);
        std::printf("experiment %d \"%s\": %d curve(s)\n", e->GetOid(),
                    (const char*)e->GetEntityName().utf8_str(), e->GetNbCourbe());
        wxVyrListCourbeNode* cnode = e->GetFirstCourbeNode();
        while (cnode) {
            VyrCourbe* c = e->GetNextCourbe(&cnode);
            std::printf("  curve %d %s: %u points, %s from %g to %g %s\n", c->GetOid(),
                        (const char*)c->GetName().utf8_str(), c->GetSize(),
                        (const char*)c->GetVy()->GetGrandeur().utf8_str(), c->GetVy()->GetMin(),
                        c->GetVy()->GetMax(), (const char*)c->GetVy()->GetUnite().utf8_str());
        }
    }
    return created ? 0 : 1;
}
