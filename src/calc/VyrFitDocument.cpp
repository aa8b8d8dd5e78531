// A converged fit kept in the document: the model as a curve of the source's experiment and a
// note on it, made through the document's public operations so that they are drawn, saved and
// loaded like any curve and note.
#include <algorithm>
#include <cmath>

#include "calc/VyrFitImpl.h"
#include "vyrbase/calc/VyrFit.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"

VyrCourbe* VyrFit::AddToDocument(VyrBaseData* doc, VyrCourbe* source, int points) const {
    const Impl& d = *m_pImpl;
    if (!doc || !source || !d.converged || !source->GetVx() || !source->GetVy() || points < 2 ||
        points > 100000)
        return nullptr;
    VyrExperience* e = doc->FindExperienceFromCourbe(source);
    if (!e)
        return nullptr;
    VyrVecteur* vx = source->GetVx();
    VyrVecteur* vy = source->GetVy();
    VyrCourbeParam p;
    p.m_sGrdX = vx->GetGrandeur();
    p.m_sUniteX = vx->GetUnite();
    p.m_sUniteY = vy->GetUnite();
    p.m_sGrdY = VyrBaseData::GetUniqueGrandeur(e, "fit_" + vy->GetGrandeur(), p.m_sUniteY,
                                               p.m_sGrdX, p.m_sUniteX);
    p.m_sNom = p.m_sGrdY;
    p.m_sNomVx = p.m_sNom + "VX";
    p.m_sNomVy = p.m_sNom + "VY";
    p.m_sText = GetEquation();
    const wxColour& c = source->GetColor();
    // The source's colour, darker, so that model and measurement are told apart.
    p.m_colour = wxColour(c.Red() * 3 / 5, c.Green() * 3 / 5, c.Blue() * 3 / 5);
    p.m_iWidth = 2;
    p.m_iStylePoint = 0;
    p.m_iStyleLiaison = 1;
    p.m_scale = source->GetScale();
    bool created = false;
    VyrCourbe* curve = doc->CreateCourbe(e, p, &created, false);
    if (!curve)
        return nullptr;
    curve->PreAlloc(points);
    const double x0 = d.xmin, x1 = d.xmax;
    for (int i = 0; i < points; ++i) {
        const double x = i == points - 1 ? x1 : x0 + (x1 - x0) * double(i) / double(points - 1);
        const double y = Evaluate(x);
        doc->AddPoint(curve, x, std::isfinite(y) ? y : 0.0, false);
        if (!std::isfinite(y))
            curve->GetVy()->ValidateAt(i, false);  // outside the model's domain
    }
    for (int diagram = 0; diagram < 2; ++diagram)
        curve->SetShownInDiagram(diagram, source->IsShownInDiagram(diagram));

    // The note stands at the model's point a third of the way along, its box above it.
    const int anchor = points / 3;
    VyrNote* note = doc->CreateNoteEntity();
    note->SetType(VYR_NOTE_ANNOTATION);
    note->SetText("y = " + GetEquation() + "; " + FormatResult(4, "; "));
    note->SetPointIndex(anchor);
    const double yAnchor = curve->GetVy()->GetVal(anchor);
    double ymin = yAnchor, ymax = yAnchor;
    for (int i = 0; i < points; ++i) {
        const double y = curve->GetVy()->GetVal(i);
        ymin = std::min(ymin, y);
        ymax = std::max(ymax, y);
    }
    note->SetPosition(curve->GetVx()->GetVal(anchor) + (x1 - x0) * 0.05,
                      yAnchor + (ymax - ymin) * 0.25);
    curve->AddNote(note);
    VyrObserverMsg changed(VYR_MSG_DATA_CHANGED, curve);
    doc->UpdateAllObservers(changed);
    return curve;
}
