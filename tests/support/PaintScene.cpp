#include "support/PaintScene.h"

#include <cstdlib>

#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrScale.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

PaintScene::PaintScene() : m_doc(nullptr) {
    VyrExperienceParam param("E1");
    m_pExperience = m_doc.CreateExperience(param);
    VyrBaseData::SetActiveBase(&m_doc);
}

PaintScene::~PaintScene() {
    if (VyrBaseData::GetActiveBase() == &m_doc)
        VyrBaseData::SetActiveBase(nullptr);
}

VyrDiagram& PaintScene::Diagram() {
    return *m_doc.GetDiagram(0);
}

VyrCourbe* PaintScene::AddCurve(const CurveLook& look,
                                const std::vector<std::pair<double, double>>& pts) {
    VyrCourbeParam p;
    p.m_sNom = look.grdY + "(" + look.grdX + ")";
    p.m_sNomVx = look.grdX;
    p.m_sNomVy = look.grdY;
    p.m_sGrdX = look.grdX;
    p.m_sGrdY = look.grdY;
    p.m_sUniteX = look.unitX;
    p.m_sUniteY = look.unitY;
    p.m_colour = look.colour;
    p.m_iWidth = look.width;
    p.m_iStylePoint = look.stylePoint;
    p.m_iStyleLiaison = look.styleLiaison;
    VyrCourbe* c = m_doc.CreateCourbe(m_pExperience, p, nullptr, false);
    for (const auto& xy : pts)
        m_doc.AddPoint(c, xy.first, xy.second, false);
    return c;
}

void PaintScene::SetValid(VyrCourbe* c, int i, bool valid) {
    c->GetVy()->ValidateAt(i, valid);
}

void PaintScene::Show(VyrCourbe* c) {
    c->SetShownInDiagram(0, true);
    Diagram().Fill();
}

void PaintScene::Frame(const wxRect& plot, double xmin, double xmax, double ymin, double ymax) {
    wxRect r = plot;
    Diagram().Move(r);
    VyrScale s;
    s.Set(xmin, xmax, ymin, ymax);
    Diagram().SetManualScale(&s, false);
}

void PaintScene::SetUnitRangeY(const wxString& unit, double ymin, double ymax) {
    VyrUnit* u = Diagram().FindUnitY(unit);
    if (!u)
        return;
    u->SetMin(VYR_SCALE_MANUAL, ymin);
    u->SetMax(VYR_SCALE_MANUAL, ymax);
    Diagram().SetTypeScale(VYR_SCALE_MANUAL);
}

long CountDifferentPixels(const wxImage& a, const wxImage& b, int tolerance) {
    if (!a.IsOk() || !b.IsOk() || a.GetSize() != b.GetSize())
        return -1;
    const unsigned char* pa = a.GetData();
    const unsigned char* pb = b.GetData();
    const long pixels = static_cast<long>(a.GetWidth()) * a.GetHeight();
    long different = 0;
    for (long i = 0; i < pixels; ++i) {
        for (int k = 0; k < 3; ++k) {
            if (std::abs(pa[3 * i + k] - pb[3 * i + k]) > tolerance) {
                ++different;
                break;
            }
        }
    }
    return different;
}
