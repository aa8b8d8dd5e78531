// A document made active for the duration of a test, with one experiment and helpers to add
// curves and to give a diagram a transform that maps real values to pixels by hand:
//
//     DiagramTestDocument t;
//     VyrCourbe* c = t.AddCourbe("U", "V", {{10, 20}, {30, 40}});   // U(t) in V against s
//     VyrDiagram* d = t.Diagram(0);
//     d->ShowData(c, true);
//     t.UseUnitPixels(d);           // (x, y) in s and V is drawn at pixel (x, 100 - y)
#ifndef VYR_TESTS_SUPPORT_DIAGRAMTESTDOCUMENT_H
#define VYR_TESTS_SUPPORT_DIAGRAMTESTDOCUMENT_H

#include <utility>
#include <vector>

#include <wx/gdicmn.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrScale.h"
#include "vyrbase/diagram/VyrDiagram.h"

class DiagramTestDocument {
public:
    typedef std::vector<std::pair<double, double>> Points;

    explicit DiagramTestDocument(wxDocument* toolkitDocument = nullptr) : doc(toolkitDocument) {
        VyrExperienceParam p("E1");
        experience = doc.CreateExperience(p);
        VyrBaseData::SetActiveBase(&doc);
    }
    ~DiagramTestDocument() {
        if (VyrBaseData::GetActiveBase() == &doc)
            VyrBaseData::SetActiveBase(nullptr);
    }
    DiagramTestDocument(const DiagramTestDocument&) = delete;
    DiagramTestDocument& operator=(const DiagramTestDocument&) = delete;

    VyrDiagram* Diagram(int index) { return doc.GetDiagram(index); }

    // A curve grdY(grdX) in uniteY against uniteX, with the points given (all valid), in the
    // given experiment (the test's own by default). Nothing is notified for the points.
    VyrCourbe* AddCourbe(const wxString& grdY, const wxString& uniteY, const Points& points,
                         const wxString& grdX = "t", const wxString& uniteX = "s",
                         VyrExperience* in = nullptr) {
        VyrCourbeParam p;
        p.m_sNom = grdY + "_" + grdX;
        p.m_sNomVx = p.m_sNom + "VX";
        p.m_sNomVy = p.m_sNom + "VY";
        p.m_sGrdX = grdX;
        p.m_sUniteX = uniteX;
        p.m_sGrdY = grdY;
        p.m_sUniteY = uniteY;
        VyrCourbe* c = doc.CreateCourbe(in ? in : experience, p, nullptr, false);
        for (const auto& pt : points)
            doc.AddPoint(c, pt.first, pt.second, false);
        return c;
    }

    // Manual ranges 0..100 on both axes (for the diagram's Ux and Uy) and a 101 x 101 plot
    // rectangle at `corner`: real (x, y) is then drawn at pixel corner + (x, 100 - y).
    static void UseUnitPixels(VyrDiagram* d, wxPoint corner = wxPoint(0, 0)) {
        VyrScale manual(0.0, 100.0, 0.0, 100.0);
        d->SetManualScale(&manual, false);
        wxRect plot(corner.x, corner.y, 101, 101);
        d->Move(plot);
    }

    VyrBaseData doc;
    VyrExperience* experience = nullptr;
};

#endif
